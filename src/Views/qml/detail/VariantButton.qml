import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One entry of a game that stands several times in the collection.
AbstractButton {
    id: button

    required property string help
    required property bool installed

    implicitWidth: row.implicitWidth + leftPadding + rightPadding
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
    ToolTip.visible: hovered || visualFocus
    ToolTip.delay: 700
    ToolTip.text: help
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.space8

            AppIcon {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                visible: button.installed
                name: "check"
                color: button.checked ? Theme.accentText : Theme.success
                size: Math.round(14 * Theme.textScale)
            }
            AppText {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, button.availableWidth - (mark.visible ? mark.width + Theme.space8 : 0))
                text: button.text
                color: button.checked ? Theme.accentText : Theme.text
                Accessible.ignored: true
            }
        }
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
