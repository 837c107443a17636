import QtQuick
import QtTest
import Ludarium

TestCase {
    id: test

    name: "MainWindow"
    when: windowShown

    property Main window: null

    SignalSpy {
        id: answers

        target: setup
        signalName: "answered"
    }
    SignalSpy {
        id: folders

        target: setup
        signalName: "folderAnswered"
    }
    SignalSpy {
        id: launches

        target: App.launch
        signalName: "changed"
    }
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
    }
    function cleanupTestCase() {
        window.destroy();
    }
    function init() {
        App.browse.searchText = "";
        App.browse.clearFilters();
        App.browse.viewMode = "Grid";
        App.browse.currentRow = -1;
        tryCompare(App.browse.games, "count", 36);
        focusGames();
        answers.clear();
        folders.clear();
    }

    // The first item below `item` whose Accessible.name or type matches.
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
    function search() {
        return find(window.contentItem, item => item instanceof BrowsePage).search;
    }
    function games() {
        return find(window.contentItem, item => item instanceof GameGridView || item instanceof GameTableView);
    }
    function focusGames() {
        tryVerify(() => games() !== null);
        games().forceActiveFocus();
        tryVerify(() => games().activeFocus);
    }

    function test_ctrlFReachesTheSearchAndEscapeEmptiesThenLeavesIt() {
        keyClick(Qt.Key_F, Qt.ControlModifier);
        verify(search().activeFocus);
        for (const letter of "copper")
            keyClick(letter);
        compare(search().text, "copper");
        tryCompare(App.browse.games, "count", 6);
        keyClick(Qt.Key_Escape);
        compare(search().text, "");
        compare(App.browse.games.count, 36);
        verify(search().activeFocus);
        keyClick(Qt.Key_Escape);
        verify(!search().activeFocus);
        verify(games().activeFocus);
    }
    function test_typingWaitsForAPauseBeforeTheListChanges() {
        keyClick(Qt.Key_F, Qt.ControlModifier);
        keyClick("c");
        keyClick("o");
        compare(App.browse.games.count, 36);
        tryVerify(() => App.browse.games.count < 36);
    }
    function test_arrowsMoveTheSelection_data() {
        return [
            {
                "tag": "right selects the first, then the next",
                "mode": "Grid",
                "keys": [Qt.Key_Right, Qt.Key_Right],
                "row": 1
            },
            {
                "tag": "left at the start stays",
                "mode": "Grid",
                "keys": [Qt.Key_Right, Qt.Key_Left],
                "row": 0
            },
            {
                "tag": "up in the first row stays",
                "mode": "Grid",
                "keys": [Qt.Key_Right, Qt.Key_Right, Qt.Key_Up],
                "row": 1
            },
            {
                "tag": "end and home",
                "mode": "Grid",
                "keys": [Qt.Key_End, Qt.Key_Left, Qt.Key_Home, Qt.Key_Right],
                "row": 1
            },
            {
                "tag": "down in the list is one row",
                "mode": "List",
                "keys": [Qt.Key_Down, Qt.Key_Down, Qt.Key_Down],
                "row": 2
            }
        ];
    }
    function test_arrowsMoveTheSelection(data) {
        App.browse.viewMode = data.mode;
        focusGames();
        for (const key of data.keys)
            keyClick(key);
        compare(App.browse.currentRow, data.row);
    }
    function test_downInTheGridGoesByARowOfWhatIsOnScreen() {
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Down);
        compare(App.browse.currentRow, (games() as GameGridView).columns);
        const cell = find(games(), item => item instanceof GameCell && item.selected);
        verify(cell !== null);
    }
    function test_theLastGameComesIntoView() {
        keyClick(Qt.Key_End);
        compare(App.browse.currentRow, 35);
        tryVerify(() => {
            const cell = find(games(), item => item instanceof GameCell && item.selected);
            return cell && cell.mapToItem(games(), 0, 0).y + cell.height <= games().height + 1 && cell.mapToItem(games(), 0, 0).y >= 0;
        });
    }
    function test_enterPlaysTheSelectedGame() {
        keyClick(Qt.Key_Return);
        compare(App.launch.gameId, "");
        keyClick(Qt.Key_Right);
        launches.clear();
        keyClick(Qt.Key_Return);
        verify(launches.count > 0);
        verify(App.launch.gameId !== "");
        // Without an emulator the launch asks for one and then tells that there is none.
        tryVerify(() => {
            if (App.launch.launching)
                App.dialogs.dismiss();
            return !App.launch.launching && App.launch.error !== "";
        });
        tryVerify(() => App.dialogs.active);
        verify(App.dialogs.title.includes("could not be started"));
        compare(App.dialogs.text, App.launch.error);
        App.dialogs.dismiss();
        tryVerify(() => !App.dialogs.active);
    }
    function test_aQuestionTakesTheKeyboard_data() {
        return [
            {
                "tag": "return presses the first button",
                "keys": [Qt.Key_Return],
                "button": 0
            },
            {
                "tag": "tab goes to the second",
                "keys": [Qt.Key_Tab, Qt.Key_Space],
                "button": 1
            },
            {
                "tag": "escape is the last",
                "keys": [Qt.Key_Escape],
                "button": 2
            }
        ];
    }
    function test_aQuestionTakesTheKeyboard(data) {
        setup.ask("Incomplete", "Go on?", ["Repair", "Skip", "Cancel"]);
        tryVerify(() => window.activeFocusItem && window.activeFocusItem.text === "Repair");
        verify(window.activeFocusItem.visualFocus);
        for (const key of data.keys)
            keyClick(key);
        tryCompare(answers, "count", 1);
        compare(answers.signalArguments[0][0], data.button);
        tryVerify(() => games().activeFocus);
    }
    function test_whatDestroysIsRedAndHasToBeChosen_data() {
        return [
            {
                "tag": "platform",
                "open": () => App.platforms.deletePlatform(App.game.platform),
                "button": "Delete"
            },
            {
                "tag": "reset",
                "open": () => App.settings.item("resetForTesting").activate(),
                "button": "Reset"
            }
        ];
    }
    function test_whatDestroysIsRedAndHasToBeChosen(data) {
        App.browse.currentRow = 0;
        const count = App.library.gameCount;
        data.open();
        tryVerify(() => window.activeFocusItem && window.activeFocusItem.text === "Cancel");
        verify(window.activeFocusItem.visualFocus);
        const red = find(window.contentItem.parent, item => item instanceof AppButton && item.text === data.button);
        verify(red.x < window.activeFocusItem.x, "the told order");
        compare(red.background.color, Theme.dangerFill);
        keyClick(Qt.Key_Return);
        tryVerify(() => !App.dialogs.active);
        wait(50);
        compare(App.library.gameCount, count);
        compare(setup.stored("collectionPath"), App.library.folder);
    }
    function test_questionsComeOneAfterAnother() {
        setup.ask("First", "", ["Yes", "No"]);
        setup.ask("Second", "", ["Go", "Stop"]);
        tryVerify(() => window.activeFocusItem && window.activeFocusItem.text === "Yes");
        compare(App.dialogs.title, "First");
        keyClick(Qt.Key_Escape);
        tryVerify(() => window.activeFocusItem && window.activeFocusItem.text === "Go");
        compare(App.dialogs.title, "Second");
        keyClick(Qt.Key_Return);
        tryCompare(answers, "count", 2);
        compare(answers.signalArguments[0][0], 1);
        compare(answers.signalArguments[1][0], 0);
    }
    function test_commandsAreDeafUnderWhatCoversTheWindow_data() {
        return [
            {
                "tag": "question",
                "open": () => setup.ask("Wait", "", ["OK"])
            },
            {
                "tag": "about",
                "open": () => window.showAbout()
            },
            {
                "tag": "picker",
                "open": () => window.showFolderPicker()
            },
            {
                "tag": "folder panel",
                "open": () => setup.askForFolder()
            },
            {
                "tag": "name",
                "open": () => find(window.contentItem, item => item instanceof SidebarMenus).askName("", "Old", "")
            },
            {
                "tag": "viewer",
                "open": () => find(window.contentItem, item => item instanceof DetailPane).showPicture(0)
            }
        ];
    }
    function test_commandsAreDeafUnderWhatCoversTheWindow(data) {
        App.browse.currentRow = 0;
        tryVerify(() => App.game.hasGame);
        const favorite = App.game.favorite;
        data.open();
        tryVerify(() => !window.commands.free);
        wait(50);
        keyClick(Qt.Key_2, Qt.ControlModifier);
        keyClick(Qt.Key_D, Qt.ControlModifier);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        keyClick(Qt.Key_F10);
        compare(App.browse.title, "All Games");
        compare(App.game.favorite, favorite);
        verify(!search().activeFocus);
        verify(!window.menuBar.menuAt(0).visible);
        keyClick(Qt.Key_Escape);
        tryVerify(() => window.commands.free);
        tryVerify(() => games().activeFocus || find(window.contentItem, item => item instanceof SidebarList).activeFocus);
        keyClick(Qt.Key_2, Qt.ControlModifier);
        compare(App.browse.title, "Favorites");
    }
    function test_escapeGoesBackToTheGames_data() {
        return [
            {
                "tag": "toolbar",
                "item": () => find(window.contentItem, item => item instanceof BrowseToolbar && item.visible).nextItemInFocusChain()
            },
            {
                "tag": "sidebar",
                "item": () => find(window.contentItem, item => item instanceof SidebarList)
            },
            {
                "tag": "detail pane",
                "item": () => find(window.contentItem, item => item instanceof RatingStars)
            },
            {
                "tag": "search",
                "item": search
            }
        ];
    }
    function test_escapeGoesBackToTheGames(data) {
        App.browse.currentRow = 0;
        wait(50);
        const item = data.item();
        item.forceActiveFocus(Qt.TabFocusReason);
        verify(!games().activeFocus);
        keyClick(Qt.Key_Escape);
        verify(games().activeFocus);
        compare(App.browse.currentRow, 0);
    }
    function test_theKeyboardIsNeverNowhere_data() {
        return ["Hide Details", "Back to All Games", "Clear all"].map(name => ({
                    "tag": name
                }));
    }
    // A control that goes when it is pressed.
    function test_theKeyboardIsNeverNowhere(data) {
        App.browse.currentRow = 0;
        App.browse.facets.set("genre", "Adventure");
        wait(50);
        const scope = data.tag === "Hide Details" ? find(window.contentItem, item => item instanceof DetailPane) : window.contentItem;
        const button = find(scope, item => item.visible && item.clicked !== undefined && item.Accessible.name === data.tag);
        button.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Return);
        tryVerify(() => games().activeFocus, 1000, String(window.activeFocusItem));
        window.detailShown = true;
    }
    function test_aKeyEndsTheHintUnderThePointer() {
        const button = find(window.contentItem, item => item instanceof IconButton && item.iconName === "sidebar");
        mouseMove(button, 8, 8);
        mouseMove(button, 9, 9);
        tryVerify(() => button.hovered);
        keyClick(Qt.Key_F10);
        verify(!button.hovered);
        tryVerify(() => window.menuBar.menuAt(0).opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => games().activeFocus);
    }
    function test_returnLeavesTheSearchForTheGamesAndPlaysNothing() {
        App.browse.currentRow = 0;
        keyClick(Qt.Key_F, Qt.ControlModifier);
        for (const key of [Qt.Key_C, Qt.Key_O, Qt.Key_Space, Qt.Key_Left, Qt.Key_Right, Qt.Key_Right, Qt.Key_Up, Qt.Key_Down])
            keyClick(key);
        compare(search().text, "co ");
        compare(App.browse.currentRow, 0);
        keyClick(Qt.Key_Return);
        verify(games().activeFocus);
        verify(!App.launch.launching);
    }
}
