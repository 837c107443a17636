import QtQuick
import QtQuick.Controls.Basic
import Ludarium

ListView {
    id: table

    model: App.browse.games
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    currentIndex: -1
    reuseItems: true
    bottomMargin: Theme.space8
    headerPositioning: ListView.OverlayHeader
    activeFocusOnTab: true
    Accessible.role: Accessible.Table
    Accessible.name: qsTr("Games")

    TableColumns {
        id: tableColumns

        width: table.width
    }
    header: TableHead {
        width: table.width
        columns: tableColumns
    }
    delegate: TableRow {
        width: table.width
        columns: tableColumns
        viewFocused: table.activeFocus
    }
    ScrollBar.vertical: AppScrollBar {}

    GameKeys {
        id: keys

        view: table
        pageRows: Math.max(1, Math.floor(table.height / Theme.rowHeight) - 1)
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
    onHeightChanged: Qt.callLater(showSelection)
    Component.onCompleted: Qt.callLater(showSelection)
    Connections {
        target: App.browse
        function onCurrentRowChanged() {
            table.showSelection();
        }
    }
}
