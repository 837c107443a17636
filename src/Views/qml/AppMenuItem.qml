import QtQuick
import QtQuick.Controls.Basic
import Ludarium

MenuItem {
    id: item

    // An entry of several of which one holds.
    property bool choice: false
    property bool chosen: false
    // Why the entry is disabled.
    property string why: (action as Command)?.reason ?? ""
    readonly property string keys: action && action.shortcut ? String(action.shortcut) : ""

    implicitHeight: Theme.rowHeight
    implicitWidth: Math.round(280 * Math.min(Theme.textScale, 1.6))
    font.pixelSize: Theme.textBody
    Accessible.name: text
    Accessible.description: enabled ? "" : why
    Accessible.checkable: choice
    Accessible.checked: chosen

    contentItem: AppMenuItemFace {
        text: item.text
        keys: item.keys
        indent: item.choice
        arrow: item.subMenu !== null
        opacity: item.enabled ? 1 : Theme.disabledOpacity
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
