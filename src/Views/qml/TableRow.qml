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
    required property TableColumns columns
    property bool viewFocused: false

    readonly property bool selected: index === App.browse.currentRow
    readonly property var texts: [title, platform, year, developer, genre]

    implicitHeight: Theme.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: [title, platform, year, developer, genre].filter(text => text !== "").join(", ")
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
        height: parent.height

        Repeater {
            model: row.columns.list

            AppText {
                required property var modelData
                required property int index

                width: row.columns.widthOf(modelData.share)
                height: row.height
                rightPadding: Theme.space12
                verticalAlignment: Text.AlignVCenter
                text: row.texts[index]
                color: index === 0 || row.selected ? Theme.text : Theme.textSecondary
                Accessible.ignored: true
            }
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
