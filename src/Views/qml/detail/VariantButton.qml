import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One entry of a game that stands several times in the collection.
AbstractButton {
    id: button

    required property string help
    required property bool installed

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    checkable: false
    Accessible.role: Accessible.RadioButton
    Accessible.name: help
    Accessible.checkable: true
    Accessible.checked: checked
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    AppToolTip {
        visible: button.hovered || button.visualFocus
        text: button.help
    }
    contentItem: VariantFace {
        text: button.text
        installed: button.installed
        checked: button.checked
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.checked ? Theme.accent : button.hovered ? Theme.hover : Theme.raised
        border.width: button.checked ? 0 : 1
        border.color: Theme.border

        FocusRing {
            visible: button.visualFocus
        }
    }
}
