import QtQuick
import Ludarium

// One game of the list, or one group of variants.
Item {
    id: row

    required property int index
    required property string title
    required property string platform
    required property string year
    required property string developer
    required property string genre
    required property string rating
    required property string playCount
    required property string lastPlayed
    required property string playTime
    required property string status
    required property bool favorite
    required property int variants
    readonly property bool viewFocused: ListView.view ? ListView.view.activeFocus : false
    readonly property bool selected: index === App.browse.currentRow

    width: (ListView.view as ListView)?.contentWidth ?? 0
    implicitHeight: Theme.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: App.browse.joined([title, platform, year, variants > 1 ? qsTr("%L1 variants").arg(variants) : "", favorite ? qsTr("Favorite") : "", status], ", ")
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
        height: row.height

        Item {
            width: titleCell.width
            height: row.height

            TableCell {
                id: titleCell

                column: 0
                text: row.title
                color: Theme.text
                rightPadding: Theme.space12 + marks.width
            }
            Row {
                id: marks

                anchors.verticalCenter: parent.verticalCenter
                x: Math.min(titleCell.implicitWidth - titleCell.rightPadding + Theme.space8, parent.width - width - Theme.space12)
                spacing: Theme.space4

                AppIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.favorite
                    name: "favorite"
                    color: Theme.warning
                    size: Math.round(13 * Theme.textScale)
                }
                AppIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.variants > 1
                    name: "stack"
                    size: Math.round(13 * Theme.textScale)
                }
                AppText {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.variants > 1
                    text: qsTr("%L1").arg(row.variants)
                    color: Theme.textSecondary
                    font.pixelSize: Theme.textCaption
                    Accessible.ignored: true
                }
            }
        }
        TableCell {
            column: 1
            text: row.platform
        }
        TableCell {
            column: 2
            text: row.year
        }
        TableCell {
            column: 3
            text: row.developer
        }
        TableCell {
            column: 4
            text: row.genre
        }
        TableCell {
            column: 5
            text: row.rating
        }
        TableCell {
            column: 6
            text: row.playCount
        }
        TableCell {
            column: 7
            text: row.lastPlayed
        }
        TableCell {
            column: 8
            text: row.playTime
        }
        TableCell {
            column: 9
            text: row.status
        }
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: event => {
            App.browse.click(row.index);
            row.ListView.view.forceActiveFocus();
            if (event.button === Qt.RightButton)
                (row.ListView.view as GameTableView).menuWanted(null);
        }
        onDoubleClicked: event => {
            row.ListView.view.forceActiveFocus();
            if (event.button === Qt.LeftButton && App.browse.doubleClick(row.index))
                App.launch.checkVersionsAndLaunch();
        }
    }
}
