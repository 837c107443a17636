import QtQuick
import Ludarium

// One game of the grid, or one group of variants.
Item {
    id: cell

    required property int index
    required property string title
    required property string platform
    required property string cover
    required property string initials
    required property real hue
    required property bool favorite
    required property bool installed
    required property bool compressed
    required property bool downloadable
    required property int variants
    readonly property real gap: Theme.space16
    readonly property bool selected: index === App.browse.currentRow
    readonly property bool viewFocused: GridView.view ? GridView.view.activeFocus : false
    readonly property bool hovered: mouse.containsMouse || play.hovered

    function choose() {
        App.browse.currentRow = index;
        GridView.view.forceActiveFocus();
    }

    width: (GridView.view as GridView)?.cellWidth ?? 0
    height: (GridView.view as GridView)?.cellHeight ?? 0
    Accessible.role: Accessible.ListItem
    Accessible.name: variants > 1 ? qsTr("%1, %2, %L3 variants").arg(title).arg(platform).arg(variants) : qsTr("%1, %2").arg(title).arg(platform)
    Accessible.description: App.browse.joined([favorite ? qsTr("Favorite") : "", installed ? qsTr("Installed") : compressed ? qsTr("Compressed") : downloadable ? qsTr("Downloadable") : ""], ", ")
    Accessible.selected: selected

    Item {
        id: content

        width: cell.width - cell.gap
        height: cell.height - cell.gap

        Item {
            id: cover

            x: art.coverX
            y: art.coverY - (cell.hovered ? Theme.space4 : 0)
            width: art.coverWidth
            height: art.coverHeight

            Behavior on y {
                NumberAnimation {
                    duration: Theme.fast
                    easing.type: Easing.OutCubic
                }
            }
            Rectangle {
                anchors.fill: parent
                anchors.topMargin: Theme.space8
                anchors.bottomMargin: -Theme.space8
                anchors.leftMargin: -2
                anchors.rightMargin: -2
                radius: Theme.radiusCover + 2
                visible: cell.hovered
                color: Theme.shadow
            }
            Rectangle {
                anchors.fill: parent
                anchors.margins: -4
                radius: Theme.radiusCover + 4
                visible: cell.selected
                color: Theme.transparent
                border.width: 2
                border.color: cell.viewFocused ? Theme.accent : Theme.textSecondary
            }
            CoverArt {
                id: art

                x: -coverX
                y: -coverY
                width: content.width
                height: Math.round(width * 4 / 3)
                source: cell.cover
                title: cell.title
                initials: cell.initials
                hue: cell.hue
            }
            CoverBadges {
                anchors.fill: parent
                favorite: cell.favorite
                installed: cell.installed
                compressed: cell.compressed
                downloadable: cell.downloadable
                variants: cell.variants
            }
        }
        AppText {
            id: titleText

            y: art.height + Theme.space8
            width: parent.width
            text: cell.title
            font.weight: Font.Medium
            Accessible.ignored: true
        }
        AppText {
            anchors.top: titleText.bottom
            anchors.topMargin: 2
            width: parent.width
            text: cell.platform
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            Accessible.ignored: true
        }
    }

    MouseArea {
        id: mouse

        anchors.fill: content
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: event => {
            cell.choose();
            if (event.button === Qt.RightButton)
                (cell.GridView.view as GameGridView).menuWanted(null);
        }
        onDoubleClicked: {
            cell.choose();
            App.launch.playSelected();
        }
    }
    PlayButton {
        id: play

        x: cover.x + cover.width - width - Theme.space8
        y: cover.y + cover.height - height - Theme.space8
        visible: cell.hovered
        text: qsTr("Play %1").arg(cell.title)
        onClicked: {
            App.browse.currentRow = cell.index;
            App.launch.playSelected();
        }
    }
}
