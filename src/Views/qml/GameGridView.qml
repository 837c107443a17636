import QtQuick
import QtQuick.Controls.Basic
import Ludarium

GridView {
    id: grid

    // The part of the width that cells of the wanted size fill, in the middle of the view; these depend on the size
    // setting as well.
    readonly property real gridWidth: {
        App.browse.gridSize;
        return App.browse.gridWidth(width);
    }
    readonly property int columns: {
        App.browse.gridSize;
        return App.browse.gridColumns(gridWidth);
    }
    readonly property real coverWidth: cellWidth - Theme.space16

    // At `item`, or at the mouse when there is none.
    signal menuWanted(item: Item)

    model: App.browse.games
    clip: true
    leftMargin: Theme.space16 + Math.floor((width - gridWidth) / 2)
    topMargin: Theme.space16
    bottomMargin: Theme.space16
    boundsBehavior: Flickable.StopAtBounds
    // A cell that leaves the screen becomes one that comes: making one anew takes a few milliseconds.
    reuseItems: true
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1
    cacheBuffer: cellHeight
    cellWidth: Math.max(1, Math.floor((gridWidth - Theme.space16) / columns))
    cellHeight: Math.round(coverWidth * 4 / 3) + Theme.space16 + Theme.space8 + Math.round(2.9 * Theme.textBody)
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Games")

    delegate: GameCell {}
    ScrollBar.vertical: AppScrollBar {}

    GameKeys {
        id: keys

        gridWidth: grid.gridWidth
        pageRows: Math.max(1, Math.floor(grid.height / grid.cellHeight)) * grid.columns
        onMenuWanted: grid.menuWanted(grid.itemAtIndex(App.browse.currentRow))
    }
    Keys.onPressed: event => keys.handle(event)

    function showSelection() {
        if (App.browse.currentRow < 0)
            return;
        positionViewAtIndex(App.browse.currentRow, GridView.Contain);
        // The ring of the selection stands out over its cell.
        const item = itemAtIndex(App.browse.currentRow);
        if (item && item.y - topMargin < contentY)
            contentY = item.y - topMargin;
    }
    Timer {
        id: settled

        interval: 0
        onTriggered: grid.showSelection()
    }
    // A new margin alone does not move what is on screen.
    onLeftMarginChanged: contentX = -leftMargin
    // A change of the columns moves every cell.
    onWidthChanged: settled.restart()
    onCellHeightChanged: settled.restart()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onListReplaced() {
            settled.restart();
        }
        function onScrollWanted() {
            grid.showSelection();
        }
    }
}
