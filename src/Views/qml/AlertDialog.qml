import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// The question that is open, over the whole window. The first button is the one that Return presses; Escape is the
// last.
Popup {
    id: dialog

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(460 * Math.min(Theme.textScale, 1.6), (parent ? parent.width : 460) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: App.dialogs.active

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
    contentItem: AlertContent {
        focus: true
        textLimit: Math.max(120, (dialog.parent ? dialog.parent.height : 600) - 280)
    }

    function focusFirst() {
        (contentItem as AlertContent).focusFirst();
    }
    onOpened: focusFirst()
    Connections {
        target: App.dialogs
        function onCurrentChanged() {
            if (App.dialogs.active && dialog.opened)
                dialog.focusFirst();
        }
    }
}
