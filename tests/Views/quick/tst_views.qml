import QtQuick
import QtTest
import Ludarium

TestCase {
    id: test

    name: "MainViews"
    when: windowShown

    property Main window: null

    Component {
        id: mainComponent

        Main {}
    }

    function initTestCase() {
        setup.openVariants();
        window = mainComponent.createObject(null);
        window.show();
        window.requestActivate();
        tryVerify(() => window.active);
        tryVerify(() => !App.start.visible);
    }
    function cleanupTestCase() {
        window.destroy();
    }
    function init() {
        window.width = 1280;
        window.height = 800;
        App.browse.searchText = "";
        App.browse.clearFilters();
        App.browse.sortOrder = "Title";
        App.browse.gridSize = "Medium";
        show("Grid", false);
    }
    function show(mode, grouped) {
        App.browse.viewMode = mode;
        App.browse.grouped = grouped;
        App.browse.currentRow = -1;
        tryCompare(App.browse.games, "count", grouped ? 40 : 46);
        tryVerify(() => view() !== null);
        view().forceActiveFocus();
        tryVerify(() => view().activeFocus);
    }
    function find(item, wanted) {
        if (wanted(item))
            return item;
        for (let i = 0; i < item.children.length; ++i) {
            const found = find(item.children[i], wanted);
            if (found)
                return found;
        }
        return null;
    }
    function findAll(item, wanted) {
        let found = wanted(item) ? [item] : [];
        for (let i = 0; i < item.children.length; ++i)
            found = found.concat(findAll(item.children[i], wanted));
        return found;
    }
    function view() {
        return find(window.contentItem, item => item instanceof GameGridView || item instanceof GameTableView || item instanceof CoverflowView);
    }
    function control(name) {
        return find(window.contentItem, item => item.visible && item.Accessible.name === name && item.clicked !== undefined);
    }
    function cell(row) {
        return find(view(), item => item.index === row && item.cover !== undefined || item.index === row && item instanceof TableRow);
    }
    // The entry of an open menu.
    function entry(text) {
        let found = null;
        tryVerify(() => (found = find(window.contentItem.parent, item => item instanceof AppMenuItem && item.visible && item.text === text)) !== null);
        // A menu is placed when it is shown first.
        wait(60);
        return found;
    }
    function chip(name) {
        let found = null;
        tryVerify(() => (found = find(window.contentItem, item => item instanceof RemovableChip && item.Accessible.name === name && item.x > 0)) !== null);
        return found;
    }

    function test_eachModeHasAViewOfItsOwnWithAndWithoutGroups() {
        const seen = [];
        for (const mode of ["List", "Grid", "Coverflow"])
            for (const grouped of [false, true]) {
                show(mode, grouped);
                seen.push(String(view()).replace(/_.*/, ""));
            }
        compare(seen, ["GameTableView", "GameGroupTableView", "GameGridView", "GameGroupGridView", "CoverflowView", "CoverflowGroupView"]);
    }
    // Rows are numbered as they stand on screen.
    function test_arrows_data() {
        const right = Qt.Key_Right, left = Qt.Key_Left, up = Qt.Key_Up, down = Qt.Key_Down;
        return [
            { "tag": "grid: down is one game", "mode": "Grid", "grouped": false, "keys": [right, down, down], "row": 2 },
            { "tag": "grid: up is one game", "mode": "Grid", "grouped": false, "keys": [right, right, right, up], "row": 1 },
            { "tag": "grid of groups: down is a row", "mode": "Grid", "grouped": true, "keys": [right, down], "row": "columns" },
            { "tag": "grid of groups: up in the first row stays", "mode": "Grid", "grouped": true, "keys": [right, right, up], "row": 1 },
            { "tag": "grid of groups: left and right are one group", "mode": "Grid", "grouped": true, "keys": [right, right, right, left], "row": 1 },
            { "tag": "grid of groups: down from the last row stays", "mode": "Grid", "grouped": true, "keys": [Qt.Key_End, down], "row": 39 },
            { "tag": "list: down selects the first, then the next", "mode": "List", "grouped": false, "keys": [down, down], "row": 1 },
            { "tag": "list of groups: down is one", "mode": "List", "grouped": true, "keys": [down, down, down, up], "row": 1 },
            { "tag": "coverflow: down is one", "mode": "Coverflow", "grouped": false, "keys": [right, down, right, left], "row": 1 },
            { "tag": "coverflow: left of the first stays", "mode": "Coverflow", "grouped": false, "keys": [left, left], "row": 0 }
        ];
    }
    function test_arrows(data) {
        show(data.mode, data.grouped);
        for (const key of data.keys)
            keyClick(key);
        compare(App.browse.currentRow, data.row === "columns" ? view().columns : data.row);
    }
    function test_theCoverflowOfGroupsGoesThroughTheVariants() {
        show("Coverflow", true);
        const platforms = [];
        for (let i = 0; i < 46; ++i) {
            keyClick(Qt.Key_Right);
            if (App.game.title.startsWith("Amber Harbor"))
                platforms.push(App.game.platform + " in row " + App.browse.currentRow);
        }
        const row = platforms[0].split(" ").pop();
        compare(platforms, ["MS-DOS in row " + row, "DREAMM in row " + row]);
        keyClick(Qt.Key_Right);
        compare(App.browse.currentRow, 39);
    }
    function test_theSelectionComesIntoView_data() {
        return ["Grid", "List", "Coverflow"].map(mode => ({ "tag": mode, "mode": mode }));
    }
    function test_theSelectionComesIntoView(data) {
        show(data.mode, false);
        keyClick(Qt.Key_End);
        compare(App.browse.currentRow, 45);
        tryVerify(() => {
            const last = cell(45);
            if (!last)
                return false;
            const place = last.mapToItem(view(), 0, 0);
            return place.x >= 0 && place.y >= 0 && place.y < view().height && place.x < view().width;
        });
        App.browse.searchText = "amber";
        tryVerify(() => App.browse.games.count < 20);
        compare(App.browse.currentRow, -1);
        App.browse.searchText = "";
        tryCompare(App.browse, "currentRow", 45);
        tryVerify(() => cell(45) !== null);
    }
    function test_theCoverflowKeepsFewCoversAlive() {
        show("Coverflow", false);
        keyClick(Qt.Key_End);
        tryVerify(() => findAll(view(), item => item instanceof CoverflowCell).length <= 16);
        verify(findAll(view(), item => item instanceof CoverflowCell).length > 2);
    }
    function test_aHeadSortsWhereThereIsAnOrder() {
        show("List", false);
        mouseClick(control("Year"));
        compare(App.browse.sortOrder, "Year");
        mouseClick(control("Platform"));
        compare(App.browse.sortOrder, "Year");
        App.browse.currentRow = 0;
        control("Rating").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        compare(App.browse.sortOrder, "Rating");
        verify(!App.launch.launching);
        App.browse.sortOrder = "Year";
        compare(control("Year, sorted").sorted, true);
    }
    function test_aColumnIsDraggedByItsEdgeAndByKeys() {
        show("List", false);
        const head = control("Platform");
        const before = head.width;
        mousePress(head, head.width - 8, 10);
        for (let x = 0; x <= 40; x += 10)
            mouseMove(head, before - 8 + x, 10);
        mouseRelease(head, before - 8 + 40, 10);
        compare(head.width, before + 40);
        compare(find(cell(0), item => item.column === 1).width, head.width);
        head.forceActiveFocus();
        keyClick(Qt.Key_Left, Qt.ControlModifier);
        compare(head.width, before + 24);
        mouseDoubleClickSequence(head, head.width - 8, 10);
        compare(head.width, before);
    }
    function test_theToolbarLeavesTheArrowsToTheGames() {
        App.browse.currentRow = 0;
        view().forceActiveFocus();
        for (const name of ["Hide Sidebar", "Show Sidebar", "List", "Grid", "Group Duplicates: Off"]) {
            mouseClick(control(name));
            const before = App.game.title;
            tryVerify(() => view() && view().activeFocus, 1000, name);
            keyClick(Qt.Key_Right);
            verify(App.game.title !== before, name);
        }
    }
    // A click selects at once, and what stands under the pointer stays there until no second click can follow.
    function test_theFirstClickOpensThePaneOnlyWhenNoSecondCanFollow_data() {
        return ["Grid", "List", "Coverflow"].map(mode => ({ "tag": mode, "mode": mode }));
    }
    function test_theFirstClickOpensThePaneOnlyWhenNoSecondCanFollow(data) {
        show(data.mode, false);
        window.detailUsed = false;
        App.browse.currentRow = data.mode === "Coverflow" ? 0 : -1;
        window.detailUsed = false;
        const row = data.mode === "Coverflow" ? 2 : 3;
        tryVerify(() => cell(row) !== null);
        wait(300);
        const y = data.mode === "Coverflow" ? cell(row).height / 3 : 10;
        const place = () => String(cell(row).mapToItem(window.contentItem, 0, 0));
        const before = place();
        // Of a cover that stands back, the outer part is seen.
        mouseClick(cell(row), cell(row).width * (data.mode === "Coverflow" ? 1.5 : 0.5), y);
        compare(App.browse.currentRow, row);
        const clicked = App.game.title;
        verify(App.browse.clicking);
        wait(100);
        compare(place(), before);
        verify(!window.detailUsed);
        tryVerify(() => window.detailUsed);
        verify(!App.browse.clicking);
        compare(App.game.title, clicked);
    }
    function test_theContextMenuActsOnTheGameUnderThePointer_data() {
        return ["Grid", "List", "Coverflow"].map(mode => ({ "tag": mode, "mode": mode }));
    }
    function test_theContextMenuActsOnTheGameUnderThePointer(data) {
        show(data.mode, true);
        const row = data.mode === "Coverflow" ? 0 : 4;
        tryVerify(() => cell(row) !== null);
        mouseClick(cell(row), cell(row).width / 2, data.mode === "Coverflow" ? cell(row).height / 3 : 20, Qt.RightButton);
        compare(App.browse.currentRow, row);
        const title = App.game.title;
        const was = App.game.favorite;
        mouseClick(entry("Toggle Favorite"));
        compare(App.game.favorite, !was);
        compare(App.game.title, title);
        App.game.toggleFavorite();
        tryVerify(() => !find(window.contentItem.parent, item => item instanceof AppMenuItem && item.visible && item.text === "Copy Title"));
    }
    function test_theMenuKeyOpensTheMenuAndItChoosesAVariant() {
        show("Grid", true);
        while (App.game.title !== "Amber Harbor (CD)")
            keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Menu);
        mouseClick(entry("Variants"));
        mouseClick(entry("Amber Harbor (MS-DOS)"));
        compare(App.game.platform, "MS-DOS");
        keyClick(Qt.Key_Escape);
        keyClick(Qt.Key_Escape);
        keyClick(Qt.Key_F10, Qt.ShiftModifier);
        mouseClick(entry("Show All of MS-DOS"));
        compare(App.browse.title, "MS-DOS");
    }
    function test_facetsStandAsChipsAndGoByThem() {
        show("Grid", false);
        App.browse.facets.set("developer", "Blue Anvil");
        App.browse.facets.set("year", "1999");
        tryCompare(App.browse.games, "count", 4);
        mouseClick(chip("Remove filter 1999"));
        tryVerify(() => App.browse.games.count > 4);
        mouseClick(chip("Clear all"));
        tryCompare(App.browse.games, "count", 46);
        compare(control("Clear all"), null);
    }
    function test_theFilterIsUsableWithKeysAlone() {
        const button = control("Filter");
        button.forceActiveFocus();
        keyClick(Qt.Key_Return);
        let content = null;
        tryVerify(() => (content = find(window.contentItem.parent, item => item instanceof FilterContent)) !== null);
        tryVerify(() => content.activeFocus);
        for (const letter of "strat")
            keyClick(letter);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        compare(App.browse.facets.value("genre"), "Strategy");
        keyClick(Qt.Key_Return);
        compare(App.browse.facets.value("genre"), "");
        keyClick(Qt.Key_Escape);
        tryVerify(() => !content.visible);
    }
    function test_theToolbarFitsItsWidth_data() {
        return [
            { "tag": "1280", "width": 1280, "height": 800, "scale": 1 },
            { "tag": "900", "width": 900, "height": 600, "scale": 1 },
            { "tag": "1280, double text", "width": 1280, "height": 800, "scale": 2 },
            { "tag": "900, double text", "width": 900, "height": 600, "scale": 2 }
        ];
    }
    function test_theToolbarFitsItsWidth(data) {
        App.appearance.textScale = data.scale;
        window.width = data.width;
        window.height = data.height;
        App.browse.facets.set("developer", "Blue Anvil");
        keyClick(Qt.Key_Right);
        wait(50);
        const bar = find(window.contentItem, item => item instanceof BrowseToolbar);
        const clipped = [];
        for (const item of findAll(bar, item => item.visible && item.clicked !== undefined || item instanceof SearchField)) {
            const place = item.mapToItem(bar, 0, 0);
            if (place.x < 0 || place.x + item.width > bar.width + 0.5 || place.y + item.height > bar.height + 0.5)
                clipped.push(item.Accessible.name);
        }
        App.appearance.textScale = 1;
        compare(clipped, []);
    }
    function test_theGridStaysWholeWhenTextGrowsAndShrinks() {
        window.detailShown = false;
        App.browse.gridSize = "Small";
        App.browse.currentRow = 20;
        const places = [];
        for (const scale of [1, 2, 1.3, 1]) {
            App.appearance.textScale = scale;
            wait(50);
            const last = view().itemAtIndex(Math.floor(20 / view().columns) * view().columns + view().columns - 1);
            places.push(view().contentX === -view().leftMargin && last.mapToItem(view(), last.width, 0).x <= view().width);
        }
        window.detailShown = true;
        compare(places, [true, true, true, true]);
    }
    function test_aCellThatLeavesTheViewBecomesOneThatComes() {
        const model = App.browse.games;
        const cells = () => findAll(view(), item => item instanceof GameCell && item.visible);
        const wrong = [];
        let most = 0;
        const seen = new Set();
        for (const place of [0, 0.1, 0.15, 0.6, 1, 0.95, 0]) {
            view().contentY = place * (view().contentHeight - view().height);
            waitForRendering(view());
            most = Math.max(most, findAll(view(), item => item instanceof GameCell).length);
            for (const cell of cells()) {
                seen.add(cell.index);
                if (cell.title !== model.data(model.index(cell.index, 0)) || view().itemAtIndex(cell.index) !== cell)
                    wrong.push(cell.index);
            }
            for (let y = 30; y < view().height - 30; y += 40)
                if (!cells().some(cell => cell.mapToItem(view(), 0, 0).y <= y && cell.mapToItem(view(), 0, cell.height).y >= y))
                    wrong.push("nothing at " + y);
        }
        compare(wrong, []);
        verify(seen.size > most, "no cell was another game's before");
    }
    function test_anotherListBeginsAtItsTopUnlessItHoldsTheSelection() {
        App.browse.currentRow = -1;
        view().contentY = view().contentHeight - view().height;
        App.browse.sortOrder = "Year";
        tryCompare(view(), "contentY", 0);
        App.browse.currentRow = App.browse.games.count - 1;
        tryVerify(() => view().contentY > 0);
        App.browse.sortOrder = "Title";
        wait(50);
        const cell = view().itemAtIndex(App.browse.currentRow);
        verify(cell && cell.mapToItem(view(), 0, 0).y >= 0 && cell.mapToItem(view(), 0, cell.height - 16).y <= view().height);
    }
    function test_theSliderSetsTheSizeOfTheCells() {
        const slider = find(window.contentItem, item => item instanceof GridSizeSlider);
        // With as much room as there is: cells are widened to fill a row, which can hide a step.
        window.detailShown = false;
        const before = view().cellWidth;
        slider.forceActiveFocus();
        keyClick(Qt.Key_Right);
        compare(App.browse.gridSize, "Large");
        tryVerify(() => view().cellWidth > before);
        window.detailShown = true;
        App.browse.gridSize = "Small";
        compare(slider.value, 0);
    }
    function test_commandsThatCannotWorkSayWhy() {
        const commands = find(window.contentItem.parent, item => item instanceof Commands) ?? window.menuBar.commands;
        App.browse.currentRow = -1;
        for (const name of ["checkForUpdates", "addCollection", "runSetup", "importRoms", "startScreensaver", "batch", "quiz", "musicPlay", "help", "play", "setUp", "toggleFavorite"]) {
            verify(!commands[name].enabled, name);
            verify(commands[name].reason !== "", name);
        }
        compare(commands.setUp.text, "Setup/Install Game");
        const select = platform => {
            for (App.browse.currentRow = 0; App.game.platform !== platform;)
                App.browse.currentRow += 1;
        };
        select("MS-DOS");
        verify(commands.play.enabled);
        compare(commands.setUp.text, "Install Selected Game");
        select("ScummVM");
        for (const name of ["play", "setUp", "versions", "openFolder"])
            verify(!commands[name].enabled && commands[name].reason !== "", name);
    }
}
