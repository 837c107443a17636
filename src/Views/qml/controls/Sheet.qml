import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// A panel over a window that has to be answered before the window can be used.
Popup {
    id: sheet

    property real wantedWidth: 560
    // The overlay of the window that it lies over. It stays with that one until it is closed.
    required property Item ground

    Binding on parent {
        when: !sheet.visible || !sheet.parent
        value: sheet.ground
        restoreMode: Binding.RestoreNone
    }
    anchors.centerIn: parent
    width: Math.min(wantedWidth, (parent ? parent.width : wantedWidth) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose

    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.fast
        }
    }
}
