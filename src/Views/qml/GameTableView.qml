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

    header: TableHead {
        width: ListView.view ? ListView.view.width : 0
    }
    delegate: TableRow {}
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
    Timer {
        id: settled

        interval: 0
        onTriggered: table.showSelection()
    }
    onHeightChanged: settled.restart()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onCurrentRowChanged() {
            table.showSelection();
        }
    }
}
