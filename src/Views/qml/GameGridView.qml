import QtQuick
import QtQuick.Window
import QtQuick.Controls.Basic
import Ludarium

// The games as a grid of covers.
Flickable {
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
    readonly property real cellWidth: Math.max(1, Math.floor((gridWidth - Theme.space16) / columns))
    readonly property real coverWidth: cellWidth - Theme.space16
    readonly property real cellHeight: Math.round(coverWidth * 4 / 3) + Theme.space16 + Theme.space8 + Math.round(2.9 * Theme.textBody)

    // At `item`, or at the mouse when there is none.
    signal menuWanted(item: Item)

    function itemAtIndex(row: int): Item {
        return pool.itemAtIndex(row);
    }
    function showSelection() {
        if (App.browse.currentRow < 0)
            return;
        // With the ring of the selection, which stands out over its cell.
        const top = pool.y + pool.topOf(App.browse.currentRow) - Theme.space16;
        if (contentY > top)
            contentY = top;
        else if (contentY + height < top + Theme.space16 + cellHeight)
            contentY = top + Theme.space16 + cellHeight - height;
    }

    // The cell that stays at its height in the window when the cells are laid out anew: the selected one, or else the
    // first in view.
    property int keptRow: -1
    property real keptPlace: 0
    function windowTop(): real {
        return mapToItem(null, 0, 0).y;
    }
    function noteWhatIsSeen() {
        if (settled.running)
            return;
        const selected = App.browse.currentRow;
        const place = pool.topOf(selected) + pool.y - contentY;
        const seen = selected >= 0 && place > -cellHeight && place < height;
        keptRow = seen ? selected : Math.max(0, Math.floor((contentY - pool.y) / cellHeight + 0.5) * columns);
        keptPlace = pool.topOf(keptRow) + pool.y - contentY + windowTop();
    }
    function keepWhatIsSeen() {
        if (keptRow >= 0)
            contentY = Math.max(0, Math.min(pool.topOf(keptRow) + pool.y + windowTop() - keptPlace, contentHeight - height));
    }

    property real lastY: 0

    onContentYChanged: {
        noteWhatIsSeen();
        if (Math.abs(contentY - lastY) > height) {
            shared.rushing = true;
            calm.restart();
        }
        lastY = contentY;
    }
    Timer {
        id: calm

        interval: 60
        onTriggered: shared.rushing = false
    }

    clip: true
    contentWidth: width
    contentHeight: pool.implicitHeight + Theme.space16 + Theme.space16
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Games")

    ScrollBar.vertical: AppScrollBar {}

    CellPool {
        id: pool

        x: Theme.space16 + Math.floor((grid.width - grid.gridWidth) / 2)
        y: Theme.space16
        width: columns * cellWidth
        height: implicitHeight
        model: App.browse.games
        columns: grid.columns
        cellWidth: grid.cellWidth
        cellHeight: grid.cellHeight
        viewTop: grid.contentY - y
        viewHeight: grid.height
        delegate: GameCell {
            grid: shared // qmllint disable unqualified
        }
    }
    GridState {
        id: shared

        cellWidth: grid.cellWidth
        cellHeight: grid.cellHeight
        coverWidth: grid.coverWidth
        focused: grid.activeFocus
        hoveredIndex: mouse.hoveredIndex
        pixelRatio: grid.Screen.devicePixelRatio
        onCoverWidthChanged: requestWidth === 0 ? resized.triggered() : resized.restart()
        onPixelRatioChanged: resized.restart()
    }
    // Not every width that the dragged edge of a window goes through is asked for.
    Timer {
        id: resized

        interval: 150
        onTriggered: shared.requestWidth = Math.round(shared.coverWidth * shared.pixelRatio)
    }
    GridMouse {
        id: mouse

        grid: grid
        pool: pool
        coverWidth: grid.coverWidth
        onMenuWanted: grid.menuWanted(null)
    }

    GameKeys {
        id: keys

        gridWidth: grid.gridWidth
        pageRows: Math.max(1, Math.floor(grid.height / grid.cellHeight)) * grid.columns
        onMenuWanted: grid.menuWanted(grid.itemAtIndex(App.browse.currentRow))
    }
    Keys.onPressed: event => keys.handle(event)

    Timer {
        id: settled

        interval: 0
        onTriggered: {
            grid.keepWhatIsSeen();
            grid.showSelection();
            grid.noteWhatIsSeen();
        }
    }
    // A change of the columns moves every cell.
    onWidthChanged: settled.restart()
    onCellHeightChanged: settled.restart()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onListReplaced() {
            grid.contentY = 0;
            grid.keptRow = -1;
            settled.restart();
        }
        function onCurrentRowChanged() {
            grid.noteWhatIsSeen();
        }
        function onScrollWanted() {
            grid.showSelection();
        }
    }
}
