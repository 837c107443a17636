import QtQuick
import Ludarium

// One game of the list.
Item {
    id: row

    required property int index
    required property string title
    required property string platform
    required property string year
    required property string developer
    required property string genre
    readonly property bool viewFocused: ListView.view ? ListView.view.activeFocus : false

    readonly property bool selected: index === App.browse.currentRow

    width: ListView.view ? ListView.view.width : 0
    implicitHeight: Theme.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2").arg(title).arg(year === "" ? platform : qsTr("%1, %2").arg(platform).arg(year))
    Accessible.selected: selected

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.space8
        anchors.rightMargin: Theme.space8
        radius: Theme.radius
        color: row.selected ? Theme.selection : mouse.containsMouse ? Theme.hover : Theme.transparent
        border.width: row.selected && row.viewFocused ? 1 : 0
        border.color: Theme.accent
    }
    Row {
        x: Theme.space16
        width: row.width - 2 * Theme.space16
        height: row.height

        TableCell {
            share: TableColumns.title
            text: row.title
            color: Theme.text
        }
        TableCell {
            share: TableColumns.platform
            text: row.platform
        }
        TableCell {
            share: TableColumns.year
            text: row.year
        }
        TableCell {
            share: TableColumns.developer
            text: row.developer
        }
        TableCell {
            share: TableColumns.genre
            text: row.genre
        }
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onClicked: {
            App.browse.currentRow = row.index;
            row.ListView.view.forceActiveFocus();
        }
        onDoubleClicked: {
            App.browse.currentRow = row.index;
            App.launch.playSelected();
        }
    }
}
