import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A tab by its name, or a found setting with the tab it stands in.
ItemDelegate {
    id: row

    required property int index
    required property var modelData
    readonly property SettingItem item: modelData as SettingItem
    readonly property bool current: ListView.isCurrentItem

    width: ListView.view ? ListView.view.width : 0
    leftPadding: Theme.space16
    rightPadding: Theme.space16
    topPadding: Theme.space8
    bottomPadding: Theme.space8
    focusPolicy: Qt.NoFocus
    text: item ? item.label : modelData
    Accessible.name: item && item.label !== item.tab ? qsTr("%1, in %2").arg(item.label).arg(item.tab) : text
    Accessible.selected: current

    contentItem: Column {
        AppText {
            width: parent.width
            text: row.text
            font.weight: row.current ? Font.Medium : Font.Normal
            wrapMode: Text.Wrap
            maximumLineCount: 2
            Accessible.ignored: true
        }
        AppText {
            width: parent.width
            visible: row.item !== null && row.item.label !== row.item.tab
            text: row.item ? row.item.tab : ""
            color: row.current ? Theme.text : Theme.textSecondary
            font.pixelSize: Theme.textSmall
            Accessible.ignored: true
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: Theme.space8
            anchors.rightMargin: Theme.space8
            anchors.topMargin: 1
            anchors.bottomMargin: 1
            radius: Theme.radius
            color: row.current ? Theme.selection : row.hovered ? Theme.hover : Theme.transparent
            border.width: row.current && row.ListView.view && row.ListView.view.activeFocus ? 1 : 0
            border.color: Theme.accent
        }
    }
}
