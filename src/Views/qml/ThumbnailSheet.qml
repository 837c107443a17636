import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// Over the window while all covers are copied to the local disk.
Popup {
    id: sheet

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(420, (parent ? parent.width : 420) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: App.thumbnails.running
    onOpened: (contentItem as ThumbnailProgress).focusCancel()

    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    contentItem: ThumbnailProgress {
        focus: true
    }
}
