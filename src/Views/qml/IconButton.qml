import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A button that is only an icon; its text is its tooltip and what a screen reader says.
AbstractButton {
    id: button

    required property string iconName

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    opacity: enabled ? 1 : Theme.disabledOpacity
    // A click leaves the keyboard where it is, with the games.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.checkable: checkable
    Accessible.checked: checked
    ToolTip.visible: hovered && !down && text !== ""
    ToolTip.delay: 700
    ToolTip.text: text

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        AppIcon {
            anchors.centerIn: parent
            name: button.iconName
            color: button.checked ? Theme.accent : button.hovered || !button.enabled ? Theme.text : Theme.textSecondary
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.checked || button.down ? Theme.raised : button.hovered ? Theme.hover : Theme.transparent

        FocusRing {
            visible: button.visualFocus
        }
    }
}
