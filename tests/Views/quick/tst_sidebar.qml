import QtQuick
import QtQuick.Controls.Basic
import QtTest
import Ludarium

TestCase {
    id: test

    name: "Sidebar"
    when: windowShown

    property Main window: null
    property SidebarList list: null

    Component {
        id: mainComponent

        Main {}
    }

    function initTestCase() {
        window = mainComponent.createObject(null);
        window.show();
        window.requestActivate();
        tryVerify(() => window.active);
        tryVerify(() => !App.start.visible);
        list = find(window.contentItem, item => item instanceof SidebarList);
        tryVerify(() => rowNamed("Short Ones") >= 0);
    }
    function cleanupTestCase() {
        window.destroy();
    }
    function init() {
        App.sidebar.filter = "";
        App.sidebar.shown = true;
        App.sidebar.sortByCount = false;
        for (const section of ["Library", "Smart Collections", "Playlists", "Platforms"])
            App.sidebar.setExpanded(rowNamed(section), true);
        App.sidebar.setExpanded(rowNamed("Genres"), false);
        for (const group of App.platforms.groups) {
            for (const name of ["Apple IIGS", "ScummVM", "Windows 3x"])
                App.platforms.takeOutOfGroup(name);
            App.platforms.deleteGroup(group.id);
        }
        compare(App.platforms.groups.length, 0);
        App.browse.clearFilters();
        list.forceActiveFocus();
        list.currentIndex = 1;
        list.positionViewAtBeginning();
        list.typed = "";
    }

    function find(item, test) {
        if (test(item))
            return item;
        for (let i = 0; i < item.children.length; ++i) {
            const found = find(item.children[i], test);
            if (found)
                return found;
        }
        return null;
    }
    function rowNamed(name) {
        return App.sidebar.rowStartingWith(name, 0);
    }
    function show(name) {
        const row = rowNamed(name);
        verify(row >= 0, name);
        list.positionViewAtIndex(row, ListView.Contain);
        tryVerify(() => list.itemAtIndex(row) !== null);
        return list.itemAtIndex(row);
    }
    function centre(name) {
        const row = show(name);
        return row.mapToItem(list, 80, row.height / 2);
    }
    function click(name, button) {
        const at = centre(name);
        mouseClick(list, at.x, at.y, button ?? Qt.LeftButton);
    }
    function drag(from, to, meanwhile) {
        const source = show(from);
        const target = show(to);
        const start = source.mapToItem(list, 80, source.height / 2);
        const end = target.mapToItem(list, 80, target.height / 2);
        mousePress(list, start.x, start.y);
        mouseMove(list, start.x + 20, start.y + 4, -1, Qt.LeftButton);
        mouseMove(list, end.x, end.y, -1, Qt.LeftButton);
        const row = list.dropRow;
        if (meanwhile)
            meanwhile();
        mouseRelease(list, end.x, end.y);
        return row;
    }
    // The entry of the menu that is open.
    function entry(text) {
        const shown = item => item instanceof AppMenuItem && item.text === text && item.menu && item.menu.opened;
        tryVerify(() => find(window.contentItem.parent, shown) !== null, 2000, text);
        return find(window.contentItem.parent, shown);
    }
    function choose(text) {
        const item = entry(text);
        mouseClick(item);
    }
    function nameField() {
        const entry = find(window.contentItem.parent, item => item instanceof NameEntry);
        return entry ? find(entry, item => item instanceof TextField) : null;
    }
    function current() {
        return list.currentItem.name;
    }

    function test_aClickShowsTheGamesOfARow_data() {
        return ["All Games", "Favorites", "80s Classics", "Rainy Evenings", "ScummVM"].map(name => ({
                    "tag": name
                }));
    }
    function test_aClickShowsTheGamesOfARow(data) {
        click(data.tag);
        compare(App.browse.title, data.tag);
        compare(App.sidebar.currentRow, rowNamed(data.tag));
        tryCompare(App.browse.games, "count", show(data.tag).games);
        verify(show(data.tag).Accessible.name.startsWith(data.tag + ", "));
    }
    function test_keysMoveThroughTheRows_data() {
        return [
            {
                "tag": "down selects",
                "keys": [Qt.Key_Down],
                "row": "Favorites",
                "title": "Favorites"
            },
            {
                "tag": "a heading selects nothing",
                "keys": [Qt.Key_End, Qt.Key_Home],
                "row": "Library",
                "title": "Windows 3x"
            },
            {
                "tag": "the ends hold",
                "keys": [Qt.Key_End, Qt.Key_Down, Qt.Key_Down],
                "row": "Windows 3x",
                "title": "Windows 3x"
            },
            {
                "tag": "left goes to the heading, then closes it",
                "keys": [Qt.Key_Left, Qt.Key_Left, Qt.Key_Down],
                "row": "Smart Collections",
                "title": "All Games"
            },
            {
                "tag": "right opens, then goes in",
                "keys": [Qt.Key_G, Qt.Key_Right, Qt.Key_Right],
                "row": "RPGs",
                "title": "RPGs"
            },
            {
                "tag": "typing finds by the first letters",
                "keys": [Qt.Key_S, Qt.Key_C],
                "row": "ScummVM",
                "title": "ScummVM"
            },
            {
                "tag": "letters may go on after a blank",
                "keys": [Qt.Key_W, Qt.Key_I, Qt.Key_N, Qt.Key_D, Qt.Key_O, Qt.Key_W, Qt.Key_S, Qt.Key_Space, Qt.Key_3],
                "row": "Windows 3x",
                "title": "Windows 3x"
            }
        ];
    }
    function test_keysMoveThroughTheRows(data) {
        for (const key of data.keys)
            keyClick(key);
        compare(current(), data.row);
        compare(App.browse.title, data.title);
        tryVerify(() => list.currentItem.y >= list.contentY && list.currentItem.y + list.currentItem.height <= list.contentY + list.height);
    }
    function test_enterOpensAHeadingAndLeavesARowForItsGames() {
        keyClick(Qt.Key_Home);
        keyClick(Qt.Key_Return);
        compare(list.currentItem.expanded, false);
        verify(list.activeFocus);
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryVerify(() => find(window.contentItem, item => item instanceof GameGridView && item.activeFocus) !== null);
    }
    function test_theFilterNarrowsTheSidebarAndNotTheGames() {
        keyClick(Qt.Key_F, Qt.ControlModifier | Qt.AltModifier);
        for (const letter of "adv")
            keyClick(letter);
        compare(App.sidebar.count, 2);
        compare(App.browse.games.count, 36);
        keyClick(Qt.Key_Down);
        compare(App.browse.title, "Adventure");
        verify(list.activeFocus);
        keyClick(Qt.Key_F, Qt.ControlModifier | Qt.AltModifier);
        for (const letter of "zzz")
            keyClick(letter);
        compare(App.sidebar.count, 0);
        keyClick(Qt.Key_Escape);
        verify(App.sidebar.count > 20);
        keyClick(Qt.Key_Escape);
        verify(list.activeFocus);
    }
    function test_platformsAreDraggedIntoAGroupAndOut() {
        App.platforms.createGroup("Classics", "");
        const group = App.platforms.groups[0].id;
        compare(drag("ScummVM", "Classics"), rowNamed("Classics"));
        compare(App.platforms.groupOf("ScummVM"), group);
        compare(show("ScummVM").depth, 2);
        compare(show("Classics").games, 6);
        compare(drag("ScummVM", "Windows 3x", () => keyClick(Qt.Key_Escape)), rowNamed("Platforms"));
        compare(App.platforms.groupOf("ScummVM"), group, "escape ends the drag");
        compare(drag("ScummVM", "Smart Collections"), -1);
        compare(App.platforms.groupOf("ScummVM"), group);
        compare(drag("ScummVM", "Windows 3x"), rowNamed("Platforms"));
        compare(App.platforms.groupOf("ScummVM"), "");
        compare(App.browse.title, "All Games", "a drag is no click");
    }
    function test_groupsAreMadeRenamedAndDeletedFromTheMenus() {
        click("ScummVM", Qt.RightButton);
        verify(!entry("Remove from Group").enabled);
        verify(entry("Remove from Group").Accessible.description !== "");
        keyClick(Qt.Key_Escape);
        click("Platforms", Qt.RightButton);
        choose("New Group...");
        tryVerify(() => nameField() && nameField().activeFocus);
        keyClick(Qt.Key_Return);
        verify(nameField().activeFocus, "a name is needed");
        for (const letter of "Old")
            keyClick(letter);
        keyClick(Qt.Key_Return);
        tryVerify(() => list.activeFocus);
        compare(App.platforms.groups[0].name, "Old");

        click("ScummVM", Qt.RightButton);
        entry("Show Games").menu.itemAt(2).triggered();
        const group = App.platforms.groups[0].id;
        tryVerify(() => entry("Show Games").menu.itemAt(2).subMenu.count > 0);
        entry("Show Games").menu.itemAt(2).subMenu.itemAt(0).triggered();
        compare(App.platforms.groupOf("ScummVM"), group);
        tryVerify(() => list.activeFocus);

        list.currentIndex = rowNamed("Old");
        keyClick(Qt.Key_F2);
        tryVerify(() => nameField() && nameField().activeFocus);
        for (const letter of "Older")
            keyClick(letter);
        keyClick(Qt.Key_Return);
        tryVerify(() => list.activeFocus);
        compare(App.platforms.groups[0].name, "Older");
        list.currentIndex = rowNamed("Older");
        keyClick(Qt.Key_Left);
        compare(rowNamed("ScummVM"), rowNamed("ScummVM Games"), "its platform is out of sight");
        keyClick(Qt.Key_Delete);
        tryCompare(App.dialogs, "title", "Delete Group");
        keyClick(Qt.Key_Tab, Qt.ShiftModifier);
        keyClick(Qt.Key_Return);
        tryVerify(() => App.platforms.groups.length === 0);
        tryVerify(() => rowNamed("ScummVM") >= 0);
    }
    function test_theMenuKeyOpensTheMenuAndTheSortOrderChanges() {
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_F10, Qt.ShiftModifier);
        choose("Sort by Game Count");
        compare(App.sidebar.sortByCount, true);
        tryVerify(() => list.activeFocus);
    }
    function test_theSidebarIsHiddenByItsKeyAndKeepsItsWidth() {
        const sidebar = find(window.contentItem, item => item instanceof Sidebar);
        compare(sidebar.width, 240);
        mouseDrag(window.contentItem, sidebar.width, 300, 60, 0);
        tryVerify(() => sidebar.width > 280);
        const chosen = sidebar.width;
        tryCompare(App.sidebar, "width", chosen);
        keyClick(Qt.Key_S, Qt.ControlModifier | Qt.AltModifier);
        verify(!sidebar.visible);
        keyClick(Qt.Key_S, Qt.ControlModifier | Qt.AltModifier);
        verify(sidebar.visible);
        compare(sidebar.width, chosen);
        window.width = 1000;
        compare(sidebar.width, chosen);
        window.width = 1280;
        App.sidebar.width = 0;
        tryCompare(sidebar, "width", 240);
    }
}
