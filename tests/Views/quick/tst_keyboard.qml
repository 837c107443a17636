import QtQuick
import QtQuick.Controls.Basic
import QtTest
import Ludarium

// Every place of the program, gone through with the Tab key alone.
TestCase {
    id: test

    name: "Keyboard"
    when: windowShown

    property Main window: null

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
        setup.showDetails("Winter Lantern");
    }
    function cleanupTestCase() {
        window.destroy();
    }

    // All that `wanted` finds below `item`.
    function all(item, wanted) {
        let found = wanted(item) ? [item] : [];
        for (let i = 0; i < item.children.length; ++i)
            found = found.concat(all(item.children[i], wanted));
        return found;
    }
    function kind(item) {
        return String(item).replace(/(_QML.*|\(.*)/, "") + " \"" + (item.Accessible?.name ?? "") + "\"";
    }
    // Whether the eye finds the item that has the keyboard: by a frame in the accent's colour.
    function isMarked(item) {
        return all(item, each => each.visible && each.border !== undefined && each.border.width > 0 && Qt.colorEqual(each.border.color, Theme.accent)).length > 0;
    }

    function test_everyStopHasANameAndIsSeen_data() {
        const places = [];
        const add = (tag, begin, least) => places.push({
                    "tag": tag,
                    "begin": begin,
                    "least": least
                });
        for (const mode of ["Grid", "List", "Coverflow"])
            add(mode, () => {
                App.browse.viewMode = mode;
                App.browse.facets.set("genre", "Adventure");
                return window;
            }, 25);
        for (const tab of ["General", "Emulators", "Dependencies", "Artwork", "Music", "Cloud", "Community", "Services", "Advanced"])
            add("settings: " + tab, () => {
                window.showSettings();
                window.settingsWindow.tab = tab;
                return window.settingsWindow;
            }, 2);
        add("statistics", () => {
            window.showStatistics();
            return window.statisticsWindow;
        }, 1);
        add("logs", () => {
            window.showLogs();
            return window.logWindow;
        }, 6);
        for (let step = 0; step < 5; ++step)
            add("assistant " + step, () => {
                window.showAssistant();
                window.assistant.step = step;
                return window;
            }, 1);
        add("folder picker", () => {
            window.showFolderPicker();
            return window;
        }, 2);
        add("about", () => {
            window.showAbout();
            return window;
        }, 1);
        add("question", () => {
            setup.ask("Go on?", "", ["Yes", "No", "Cancel"]);
            return window;
        }, 3);
        add("picture", () => {
            all(window.contentItem, item => item instanceof DetailPane)[0].showPicture(0);
            return window;
        }, 3);
        return places;
    }
    function test_everyStopHasANameAndIsSeen(data) {
        const place = data.begin();
        tryVerify(() => place.active && place.activeFocusItem !== null);
        wait(150);
        const faults = [];
        for (const item of all(place.contentItem.parent, each => each.visible && (each.activeFocusOnTab || each.checkable !== undefined) && each.Accessible && !each.Accessible.ignored))
            if (item.Accessible.name === "")
                faults.push("nameless: " + kind(item));
        if (!window.commands.free && data.tag !== "picture" && !isMarked(window.activeFocusItem))
            faults.push("unseen at first: " + kind(window.activeFocusItem));
        const stops = [];
        let item = null;
        for (let i = 0; i < 150; ++i) {
            keyClick(Qt.Key_Tab);
            item = place.activeFocusItem;
            if (!item || stops.includes(item))
                break;
            stops.push(item);
            if (!item.Accessible || item.Accessible.name === "")
                faults.push("nameless stop: " + kind(item));
            if (!item.visible || !isMarked(item))
                faults.push("unseen stop: " + kind(item));
        }
        compare(faults, []);
        verify(item === stops[0], "the way does not lead back to where it began, but to " + kind(item));
        verify(stops.length >= data.least, "only " + stops.map(kind).join(", "));
    }
    function cleanup() {
        for (const other of [window.settingsWindow, window.statisticsWindow, window.logWindow])
            other?.close();
        App.dialogs.dismiss();
        window.assistant?.close();
        window.folderPicker?.close();
        window.requestActivate();
        tryVerify(() => window.active);
        keyClick(Qt.Key_Escape);
        tryVerify(() => window.commands.free);
    }
}
