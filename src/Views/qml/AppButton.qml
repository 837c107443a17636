import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Button {
    id: button

    property string iconName
    property bool primary: false

    readonly property color foreground: primary ? Theme.accentText : Theme.text

    implicitHeight: Theme.controlHeight
    leftPadding: Theme.space16
    rightPadding: Theme.space16
    opacity: enabled ? 1 : 0.45
    font.pixelSize: Theme.textBody
    font.weight: primary ? Font.DemiBold : Font.Normal
    Accessible.name: text

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: ButtonFace {
        text: button.text
        iconName: button.iconName
        font: button.font
        color: button.foreground
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.primary ? Theme.accent : button.hovered ? Theme.hover : Theme.raised
        border.width: button.primary ? 0 : 1
        border.color: Theme.border
        opacity: button.down ? 0.8 : button.primary && button.hovered ? 0.92 : 1

        FocusRing {
            visible: button.visualFocus
        }
    }
}
