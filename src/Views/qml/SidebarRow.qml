import QtQuick
import Ludarium

Item {
    id: row

    required property int index
    required property string name
    required property string icon
    required property int games
    readonly property bool viewFocused: ListView.view ? ListView.view.activeFocus : false

    readonly property bool selected: index === App.sidebar.currentRow

    width: ListView.view ? ListView.view.width : 0
    implicitHeight: Theme.rowHeight + 2
    Accessible.role: Accessible.ListItem
    Accessible.name: games === 1 ? qsTr("%1, 1 game").arg(name) : qsTr("%1, %L2 games").arg(name).arg(games)
    Accessible.selected: selected

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.space8
        anchors.rightMargin: Theme.space8
        anchors.topMargin: 1
        anchors.bottomMargin: 1
        radius: Theme.radius
        color: row.selected ? Theme.selection : mouse.containsMouse ? Theme.hover : Theme.transparent
        border.width: row.selected && row.viewFocused ? 1 : 0
        border.color: Theme.accent
    }
    AppIcon {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: Theme.space16
        anchors.verticalCenter: parent.verticalCenter
        name: row.icon
        size: Math.round(16 * Theme.textScale)
        color: row.selected ? Theme.accent : Theme.textSecondary
    }
    AppText {
        anchors.left: symbol.right
        anchors.leftMargin: Theme.space12
        anchors.right: number.left
        anchors.rightMargin: Theme.space8
        anchors.verticalCenter: parent.verticalCenter
        text: row.name
        font.weight: row.selected ? Font.Medium : Font.Normal
        Accessible.ignored: true
    }
    AppText {
        id: number

        anchors.right: parent.right
        anchors.rightMargin: Theme.space16
        anchors.verticalCenter: parent.verticalCenter
        text: Number(row.games).toLocaleString(Qt.locale(), "f", 0)
        font.pixelSize: Theme.textSmall
        color: row.selected ? Theme.text : Theme.textSecondary
        Accessible.ignored: true
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onClicked: {
            App.sidebar.select(row.index);
            row.ListView.view.forceActiveFocus();
        }
    }
}
