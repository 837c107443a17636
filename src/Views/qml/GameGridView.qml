import QtQuick
import QtQuick.Controls.Basic
import Ludarium

GridView {
    id: grid

    // Depends on the size setting as well as on the width.
    readonly property int columns: {
        App.browse.gridSize;
        return App.browse.columnsFor(width);
    }
    readonly property real usable: width - 2 * Theme.space16
    readonly property real coverWidth: Math.min(cellWidth - Theme.space16, App.browse.widestCell)

    model: App.browse.games
    clip: true
    leftMargin: Theme.space16
    topMargin: Theme.space16
    bottomMargin: Theme.space16
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1
    cacheBuffer: cellHeight
    cellWidth: Math.floor((usable + Theme.space16) / columns)
    cellHeight: Math.round(coverWidth * 4 / 3) + Theme.space16 + Theme.space8 + Math.round(2.9 * Theme.textBody)
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Games")

    delegate: GameCell {}
    ScrollBar.vertical: AppScrollBar {}

    GameKeys {
        id: keys

        view: grid
        columns: grid.columns
        pageRows: Math.max(1, Math.floor(grid.height / grid.cellHeight)) * grid.columns
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
    // A change of the columns moves every cell.
    onWidthChanged: settled.restart()
    onCellHeightChanged: settled.restart()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onCurrentRowChanged() {
            grid.showSelection();
        }
    }
}
