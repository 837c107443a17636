import QtQuick
import Ludarium

// One game of the grid.
Item {
    id: cell

    required property int index
    required property string title
    required property string platform
    required property string cover
    required property string initials
    required property real hue
    readonly property real gap: Theme.space16
    readonly property real coverWidth: Math.min(width - gap, App.browse.widestCell)

    readonly property bool selected: index === App.browse.currentRow
    readonly property bool viewFocused: GridView.view ? GridView.view.activeFocus : false

    width: (GridView.view as GridView)?.cellWidth ?? 0
    height: (GridView.view as GridView)?.cellHeight ?? 0
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2").arg(title).arg(platform)
    Accessible.selected: selected

    Item {
        id: content

        x: (cell.width - cell.gap - width) / 2
        width: cell.coverWidth
        height: cell.height - cell.gap

        Rectangle {
            x: art.x + art.coverX - 4
            y: art.y + art.coverY - 4
            width: art.coverWidth + 8
            height: art.coverHeight + 8
            radius: Theme.radiusCover + 4
            visible: cell.selected
            color: Theme.transparent
            border.width: 2
            border.color: cell.viewFocused ? Theme.accent : Theme.textSecondary
        }
        CoverArt {
            id: art

            width: parent.width
            height: Math.round(width * 4 / 3)
            source: cell.cover
            title: cell.title
            initials: cell.initials
            hue: cell.hue
            scale: mouse.containsMouse ? 1.02 : 1

            Behavior on scale {
                NumberAnimation {
                    duration: Theme.fast
                    easing.type: Easing.OutCubic
                }
            }
        }
        AppText {
            id: titleText

            anchors.top: art.bottom
            anchors.topMargin: Theme.space8
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
        onClicked: {
            App.browse.currentRow = cell.index;
            cell.GridView.view.forceActiveFocus();
        }
        onDoubleClicked: {
            App.browse.currentRow = cell.index;
            App.launch.playSelected();
        }
    }
    IconButton {
        x: content.x + art.x + art.coverX + art.coverWidth - width - Theme.space8
        y: art.y + art.coverY + art.coverHeight - height - Theme.space8
        visible: mouse.containsMouse || hovered
        focusPolicy: Qt.NoFocus
        iconName: "play"
        text: qsTr("Play %1").arg(cell.title)
        background: Rectangle {
            radius: height / 2
            color: Theme.accent
        }
        contentItem: Item {
            AppIcon {
                anchors.centerIn: parent
                name: "play"
                color: Theme.accentText
                size: 16
            }
        }
        onClicked: {
            App.browse.currentRow = cell.index;
            App.launch.playSelected();
        }
    }
}
