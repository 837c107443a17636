import QtQuick
import Ludarium

// One cover of the coverflow with its reflection, turned by how far it is from the middle.
Item {
    id: cell

    required property int index
    required property string title
    required property string platform
    required property string year
    required property string developer
    required property string cover
    required property string initials
    required property real hue
    required property bool favorite
    required property int variants
    required property string badges
    required property string spoken

    // The same game's picture for this view, which prefers boxes in space.
    readonly property string box: cover.replace("image://cover/", "image://coverflow/")
    readonly property ListView view: ListView.view as ListView
    readonly property real slot: (view as CoverflowList)?.slot ?? 1
    readonly property real coverWidth: (view as CoverflowList)?.coverWidth ?? 0
    readonly property real coverHeight: (view as CoverflowList)?.coverHeight ?? 0
    readonly property bool selected: index === App.browse.currentRow
    // In slots from the middle, and the part of it that turns the cover.
    readonly property real distance: view ? (x + width / 2 - view.contentX - view.width / 2) / slot : 0
    readonly property real turn: Math.max(-1, Math.min(1, distance))

    width: slot
    height: view ? view.height : 0
    z: 1000 - Math.abs(distance)
    Accessible.role: Accessible.ListItem
    Accessible.name: spoken
    Accessible.selected: selected

    Item {
        id: body

        x: Math.round((cell.slot - cell.coverWidth) / 2 + cell.turn * cell.coverWidth * 0.36)
        y: Math.round(Math.max(Theme.space8, (cell.height - cell.coverHeight * 1.28) / 2))
        width: cell.coverWidth
        height: cell.coverHeight
        scale: 1 - 0.2 * Math.abs(cell.turn)
        transformOrigin: Item.Bottom
        transform: Rotation {
            origin.x: body.width / 2
            origin.y: body.height * 0.6
            axis {
                x: 0
                y: 1
                z: 0
            }
            angle: -48 * cell.turn
        }

        Rectangle {
            x: art.coverX - 4
            y: art.coverY - 4
            width: art.coverWidth + 8
            height: art.coverHeight + 8
            radius: Theme.radiusCover + 4
            visible: cell.selected && (cell.view?.activeFocus ?? false)
            color: Theme.transparent
            border.width: 2
            border.color: Theme.accent
        }
        CoverArt {
            id: art

            anchors.fill: parent
            source: cell.box
            initials: cell.initials
            hue: cell.hue
            requestWidth: (cell.view as CoverflowList)?.requestWidth ?? 0
        }
        CoverBadges {
            x: art.coverX
            y: art.coverY
            width: art.coverWidth
            height: art.coverHeight
            visible: Math.abs(cell.distance) < 0.5
            badges: cell.badges
            favorite: cell.favorite
            pixelRatio: (cell.view as CoverflowList)?.pixelRatio ?? 1
        }
        Item {
            y: body.height + 3
            width: body.width
            height: Math.round(body.height * 0.28)

            Item {
                width: parent.width
                height: parent.height - 2
                clip: true

                CoverArt {
                    width: body.width
                    height: body.height
                    source: cell.box
                    initials: cell.initials
                    hue: cell.hue
                    requestWidth: art.requestWidth
                    transform: Scale {
                        origin.y: body.height / 2
                        yScale: -1
                    }
                }
            }
            Rectangle {
                anchors.fill: parent
                gradient: Gradient {
                    GradientStop {
                        position: 0
                        color: Theme.reflectionNear
                    }
                    GradientStop {
                        position: 1
                        color: Theme.window
                    }
                }
            }
        }
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: event => {
                App.browse.click(cell.index);
                cell.view.forceActiveFocus();
                if (event.button === Qt.RightButton)
                    (cell.view as CoverflowList).menuWanted();
            }
            onDoubleClicked: event => {
                if (event.button === Qt.LeftButton && App.browse.doubleClick(cell.index))
                    App.launch.checkVersionsAndLaunch();
            }
        }
    }
    // Covers that stand back are darker.
    Rectangle {
        parent: body
        x: art.coverX
        y: art.coverY
        width: art.coverWidth
        height: art.coverHeight
        radius: Theme.radiusCover
        color: Theme.window
        opacity: Math.min(0.6, 0.12 * Math.abs(cell.distance))
    }
}
