import QtQuick
import Ludarium

// One game of the grid, or one group of variants. Thousands of them go by in a scroll, so it holds only what is always
// seen; the mouse, and what stands on the cover under it, are the grid's.
Item {
    id: cell

    required property int index
    required property string title
    required property string platform
    required property string cover
    required property string initials
    required property real hue
    required property bool favorite
    required property string badges
    required property string spoken
    required property GridState grid
    readonly property bool selected: index === App.browse.currentRow
    readonly property bool hovered: index === grid.hoveredIndex
    // The cover itself, in the cell.
    readonly property real coverX: art.coverX
    readonly property real coverY: art.y + art.coverY
    readonly property real coverWidth: art.coverWidth
    readonly property real coverHeight: art.coverHeight

    width: grid.cellWidth
    height: grid.cellHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: spoken
    Accessible.selected: selected

    Rectangle {
        x: cell.coverX - 4
        y: cell.coverY - 4
        width: cell.coverWidth + 8
        height: cell.coverHeight + 8
        radius: Theme.radiusCover + 4
        visible: cell.selected
        color: Theme.transparent
        border.width: 2
        border.color: cell.grid.focused ? Theme.accent : Theme.textSecondary
    }
    CoverArt {
        id: art

        y: cell.hovered ? -Theme.space4 : 0
        width: cell.grid.coverWidth
        height: Math.round(width * 4 / 3)
        source: cell.grid.rushing ? "" : cell.cover
        initials: cell.initials
        hue: cell.hue
        requestWidth: cell.grid.requestWidth

        Behavior on y {
            NumberAnimation {
                duration: Theme.fast
                easing.type: Easing.OutCubic
            }
        }
    }
    CoverBadges {
        x: cell.coverX
        y: cell.coverY
        width: cell.coverWidth
        height: cell.coverHeight
        badges: cell.badges
        favorite: cell.favorite
        pixelRatio: cell.grid.pixelRatio
    }
    AppText {
        id: titleText

        y: Math.round(cell.grid.coverWidth * 4 / 3) + Theme.space8
        width: art.width
        text: cell.title
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    AppText {
        y: titleText.y + titleText.height + 2
        width: art.width
        text: cell.platform
        horizontalAlignment: Text.AlignLeft
        color: Theme.textSecondary
        font.pixelSize: Theme.textSmall
        Accessible.ignored: true
    }
}
