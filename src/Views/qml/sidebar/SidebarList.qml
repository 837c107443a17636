import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The rows. The current item is where the keyboard is; the selected row is what the main view shows.
SidebarView {
    id: rows

    property string typed: ""
    readonly property string shownKey: App.sidebar.currentKey
    readonly property SidebarRow currentRow: currentItem as SidebarRow

    signal gamesWanted
    signal menuWanted(row: int, x: real, y: real)
    signal renameWanted(row: int)
    signal deletionWanted(row: int)

    hoveredRow: mouse.containsMouse && !drag.active ? rowAt(mouse.mouseX, mouse.mouseY) : -1
    dropRow: drag.row
    topMargin: Theme.space4
    bottomMargin: Theme.space8
    clip: true
    model: App.sidebar
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Library sections")
    delegate: SidebarRow {}
    ScrollBar.vertical: AppScrollBar {
        z: 1
    }

    function rowAt(x: real, y: real): int {
        return indexAt(Math.max(1, Math.min(x, width - 1)), y + contentY);
    }
    function moveTo(row: int) {
        if (row < 0 || row >= count)
            return;
        currentIndex = row;
        positionViewAtIndex(row, ListView.Contain);
        App.sidebar.select(row);
    }
    // From the filter: to the first row that can be shown.
    function enter() {
        forceActiveFocus(Qt.TabFocusReason);
        moveTo(Math.min(1, count - 1));
    }
    function activate() {
        const shows = currentRow && !currentRow.expandsOnly;
        App.sidebar.activate(currentIndex);
        if (shows)
            gamesWanted();
    }
    function type(text: string) {
        typed += text;
        pause.restart();
        moveTo(App.sidebar.rowStartingWith(typed, typed.length === 1 ? currentIndex + 1 : currentIndex));
    }
    // A page less one row, so that something of the old page stays in sight.
    function page(): int {
        return Math.max(1, Math.floor(height / Theme.rowHeight) - 1);
    }
    function openMenu() {
        positionViewAtIndex(currentIndex, ListView.Contain);
        if (currentItem)
            menuWanted(currentIndex, Theme.space24, currentItem.y - contentY + currentItem.height);
    }
    function followSelection() {
        if (App.sidebar.currentRow < 0)
            return;
        currentIndex = App.sidebar.currentRow;
        positionViewAtIndex(currentIndex, ListView.Contain);
    }

    Keys.onUpPressed: moveTo(currentIndex - 1)
    Keys.onDownPressed: moveTo(currentIndex + 1)
    Keys.onReturnPressed: activate()
    Keys.onEnterPressed: activate()
    Keys.onDeletePressed: deletionWanted(currentIndex)
    Keys.onMenuPressed: openMenu()
    Keys.onLeftPressed: {
        if (currentRow && currentRow.canCollapse)
            App.sidebar.setExpanded(currentIndex, false);
        else
            moveTo(App.sidebar.parentRow(currentIndex));
    }
    Keys.onRightPressed: {
        if (currentRow && currentRow.canExpand)
            App.sidebar.setExpanded(currentIndex, true);
        else if (App.sidebar.parentRow(currentIndex + 1) === currentIndex)
            moveTo(currentIndex + 1);
    }
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Space && typed !== ""
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Home)
            moveTo(0);
        else if (event.key === Qt.Key_End)
            moveTo(count - 1);
        else if (event.key === Qt.Key_PageUp)
            moveTo(Math.max(0, currentIndex - page()));
        else if (event.key === Qt.Key_PageDown)
            moveTo(Math.min(count - 1, currentIndex + page()));
        else if (event.key === Qt.Key_F2)
            renameWanted(currentIndex);
        else if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            openMenu();
        else if (event.key === Qt.Key_Escape && drag.active)
            drag.cancel();
        else if (event.text.trim() + typed !== "" && event.text >= " " && event.key !== Qt.Key_Delete && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)))
            type(event.text);
        else
            event.accepted = false;
    }
    onShownKeyChanged: followSelection()
    Component.onCompleted: followSelection()

    Timer {
        id: pause

        interval: 1000
        onTriggered: rows.typed = ""
    }
    // One for all rows, so that a row that scrolls away under a drag does not end it.
    MouseArea {
        id: mouse

        parent: rows
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: event => {
            const row = rows.rowAt(event.x, event.y);
            rows.forceActiveFocus(Qt.MouseFocusReason);
            if (row < 0)
                return;
            rows.currentIndex = row;
            if (event.button === Qt.RightButton)
                rows.menuWanted(row, event.x, event.y);
            else
                preventStealing = drag.prepare(row, event.x, event.y);
        }
        onPositionChanged: event => drag.move(event.x, event.y)
        onReleased: drag.finish()
        onCanceled: drag.cancel()
        onClicked: event => {
            const row = rows.rowAt(event.x, event.y);
            if (event.button !== Qt.LeftButton || row < 0 || drag.happened)
                return;
            const item = rows.itemAtIndex(row) as SidebarRow;
            if (item && item.isArrow(event.x))
                App.sidebar.setExpanded(row, !item.expanded);
            else
                App.sidebar.activate(row);
        }
    }
    // One for all rows, too: they are made by the dozen while the filter is typed.
    AppToolTip {
        readonly property SidebarRow row: rows.hoveredRow < 0 ? null : rows.itemAtIndex(rows.hoveredRow) as SidebarRow

        parent: row ?? rows
        visible: row !== null && row.visible && row.truncated
        timeout: 5000
        text: row?.name ?? ""
    }
    SidebarDrag {
        id: drag

        parent: rows
        list: rows
    }
}
