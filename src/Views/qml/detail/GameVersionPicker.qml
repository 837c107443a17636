import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// Which version of a game to launch, over the whole window.
Popup {
    id: dialog

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(Math.round(460 * Math.min(Theme.textScale, 1.5)), (parent ? parent.width : 460) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: App.launch.versions.active

    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    contentItem: GameVersionPickerView {
        focus: true
        listLimit: Math.max(120, (dialog.parent ? dialog.parent.height : 600) - 200 - 60 * Theme.textScale)
    }
    onOpened: (contentItem as GameVersionPickerView).begin()
}
