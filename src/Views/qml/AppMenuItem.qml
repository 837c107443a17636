import QtQuick
import QtQuick.Controls.Basic
import Ludarium

MenuItem {
    id: item

    // An entry of several of which one holds.
    property bool choice: false
    property bool chosen: false
    readonly property string keys: action && action.shortcut ? String(action.shortcut) : ""

    implicitHeight: Theme.rowHeight
    implicitWidth: 280
    font.pixelSize: Theme.textBody
    Accessible.name: text
    Accessible.checkable: choice
    Accessible.checked: chosen

    contentItem: Item {
        AppText {
            anchors.left: parent.left
            anchors.leftMargin: item.choice ? 2 * Theme.space12 : Theme.space4
            anchors.verticalCenter: parent.verticalCenter
            text: item.text
            opacity: item.enabled ? 1 : 0.45
        }
        AppText {
            anchors.right: parent.right
            anchors.rightMargin: item.subMenu ? Theme.space16 : Theme.space4
            anchors.verticalCenter: parent.verticalCenter
            text: item.keys
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            opacity: item.enabled ? 1 : 0.45
        }
    }
    indicator: AppIcon {
        x: Theme.space8
        anchors.verticalCenter: parent ? parent.verticalCenter : undefined
        visible: item.choice && item.chosen
        name: "check"
        size: 14
        color: Theme.accent
    }
    arrow: AppIcon {
        x: item.width - width - Theme.space8
        anchors.verticalCenter: parent ? parent.verticalCenter : undefined
        visible: item.subMenu !== null
        name: "chevron"
        size: 14
    }
    background: Rectangle {
        radius: Theme.radiusSmall
        color: item.highlighted ? Theme.hover : Theme.transparent
    }
}
