import QtQuick
import QtQuick.Controls.Basic
import Ludarium

ListView {
    id: table

    readonly property real columnsWidth: {
        let sum = 2 * Theme.space16;
        for (const width of App.browse.table.widths)
            sum += Math.round(width * Theme.textScale);
        return sum;
    }

    // At `item`, or at the mouse when there is none.
    signal menuWanted(item: Item)

    model: App.browse.games
    clip: true
    // Columns that do not fit are scrolled to.
    contentWidth: Math.max(width, columnsWidth)
    flickableDirection: Flickable.HorizontalAndVerticalFlick
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1
    reuseItems: true
    bottomMargin: Theme.space12
    headerPositioning: ListView.OverlayHeader
    activeFocusOnTab: true
    Accessible.role: Accessible.Table
    Accessible.name: qsTr("Games")

    header: TableHead {
        width: (ListView.view as ListView)?.contentWidth ?? 0
    }
    delegate: TableRow {}
    ScrollBar.vertical: AppScrollBar {}
    ScrollBar.horizontal: AppScrollBar {}

    GameKeys {
        id: keys

        pageRows: Math.max(1, Math.floor(table.height / Theme.rowHeight) - 1)
        onMenuWanted: table.menuWanted(table.itemAtIndex(App.browse.currentRow))
    }
    Keys.onPressed: event => keys.handle(event)

    function showSelection() {
        if (App.browse.currentRow < 0)
            return;
        positionViewAtIndex(App.browse.currentRow, ListView.Contain);
        // The head covers the first row of what the view shows.
        const item = itemAtIndex(App.browse.currentRow);
        if (item && headerItem && item.y - headerItem.height < contentY)
            contentY = item.y - headerItem.height;
    }
    // Where the view stood in the window: its rows stay where they were when what is above it gets higher.
    property real keptTop: -1
    function keepWhatIsSeen() {
        const top = mapToItem(null, 0, 0).y;
        if (keptTop >= 0 && keptTop !== top)
            contentY = Math.max(originY, Math.min(contentY + top - keptTop, originY + contentHeight + bottomMargin - height));
        keptTop = top;
    }
    Timer {
        id: settled

        interval: 0
        onTriggered: {
            table.keepWhatIsSeen();
            table.showSelection();
        }
    }
    onHeightChanged: settled.restart()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onListReplaced() {
            settled.restart();
        }
        function onScrollWanted() {
            table.showSelection();
        }
    }
}
