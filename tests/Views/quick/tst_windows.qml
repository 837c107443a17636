import QtQuick
import QtTest
import Ludarium

TestCase {
    id: test

    name: "OtherWindows"
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
    }
    function cleanupTestCase() {
        window.destroy();
    }
    function init() {
        window.requestActivate();
        tryVerify(() => window.active);
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
    function button(item, text) {
        return find(item, each => each instanceof AppButton && each.text === text && each.visible);
    }
    function settings() {
        keyClick(Qt.Key_Comma, Qt.ControlModifier);
        tryVerify(() => window.settingsWindow !== null && window.settingsWindow.active);
        return window.settingsWindow;
    }

    function test_theAssistantWalksThroughItsStepsAndIsDone() {
        window.showAssistant();
        const assistant = window.assistant;
        tryVerify(() => assistant.opened);
        const walk = [
            {
                "heading": "Welcome to Ludarium",
                "next": "Get Started",
                "back": false
            },
            {
                "heading": "Dependencies",
                "next": "Continue",
                "back": true
            },
            {
                "heading": "Emulators",
                "next": "Continue",
                "back": true
            },
            {
                "heading": "MT-32 Audio",
                "next": "Continue",
                "back": true
            },
            {
                "heading": "Ready to play",
                "next": "Finish Setup",
                "back": true
            }
        ];
        for (const step of walk) {
            const content = assistant.contentItem;
            verify(find(content, item => item instanceof AppText && item.text === step.heading), step.heading);
            verify(button(content, step.next), step.next);
            compare(button(content, "Back") !== null, step.back);
            verify(!setup.stored("hasCompletedFirstRun"));
            tryVerify(() => window.activeFocusItem && window.activeFocusItem.text === step.next);
            if (step.heading === "Emulators") {
                mouseClick(button(content, "Back"));
                compare(assistant.step, 1);
                keyClick(Qt.Key_Return);
                compare(assistant.step, 2);
            }
            keyClick(Qt.Key_Return);
        }
        tryVerify(() => !assistant.visible);
        compare(setup.stored("hasCompletedFirstRun"), true);
    }
    function test_theFolderPickerStaysUntilAFolderIsChosenOrItIsClosed() {
        keyClick(Qt.Key_O, Qt.ControlModifier | Qt.ShiftModifier);
        tryVerify(() => window.folderPicker !== null && window.folderPicker.opened);
        const picker = window.folderPicker;
        keyClick(Qt.Key_1, Qt.ControlModifier);
        keyClick(Qt.Key_Return);
        tryVerify(() => App.dialogs.choosingFolder);
        compare(App.dialogs.folderPrompt, "Select");
        App.dialogs.folderCancelled();
        verify(picker.opened);
        App.openCollection(App.library.folder);
        tryVerify(() => !picker.visible);
        tryVerify(() => !App.library.loading);
        window.showFolderPicker();
        tryVerify(() => picker.opened);
        keyClick(Qt.Key_Escape);
        tryVerify(() => !picker.visible);
    }
    function test_searchingJumpsToTheSettingAndSpaceChangesIt() {
        const dialog = settings();
        dialog.tab = "General";
        dialog.navigation.searchField.text = "crt";
        dialog.navigation.searchField.accepted();
        compare(dialog.tab, "Emulators");
        tryVerify(() => find(dialog.page, item => item instanceof SettingRow && item.highlighted) !== null);
        const row = find(dialog.page, item => item instanceof SettingRow && item.highlighted);
        compare(row.settingKey, "disableCRTEffects");
        const place = row.mapToItem(dialog.page, 0, 0).y;
        verify(place >= 0 && place < dialog.page.height);
        const control = find(row, item => item instanceof AppSwitch);
        compare(control.checked, false);
        mouseClick(control);
        compare(control.checked, true);
        compare(setup.stored("disableCRTEffects"), true);
        App.settings.item("disableCRTEffects").value = false;
        compare(control.checked, false);
        dialog.navigation.searchField.text = "no such setting";
        verify(find(dialog.navigation, item => item instanceof AppText && item.visible && item.text === "No setting is called so"));
        dialog.navigation.searchField.text = "";
        dialog.close();
    }
    function test_whatSettingsAsksForLiesOverSettings() {
        const dialog = settings();
        for (const key of ["showAssistant", "resetForTesting"]) {
            App.settings.item(key).activate();
            tryVerify(() => dialog.covered, 2000, key);
            verify(!window.covered, key);
            dialog.close();
            verify(dialog.visible, "what lies over it is answered first");
            if (key === "showAssistant")
                window.assistant.close();
            else
                App.dialogs.dismiss();
            tryVerify(() => !dialog.covered);
        }
        App.chooseCollection();
        let list = null;
        tryVerify(() => (list = find(dialog.ground, item => item.objectName === "folderDialogListView")) !== null);
        const bar = find(dialog.ground, item => item.upButton !== undefined && item.background);
        compare(bar.background.color, Theme.window);
        compare(list.palette.highlightedText, Theme.text);
        App.dialogs.folderCancelled();
        tryVerify(() => find(dialog.ground, item => item.objectName === "folderDialogListView") === null);
        dialog.close();
        tryVerify(() => !dialog.visible);
        window.requestActivate();
        tryVerify(() => window.active);
        window.showAssistant();
        tryVerify(() => window.covered);
        window.assistant.close();
    }
    function test_aFoundEmulatorComesIntoView() {
        const dialog = settings();
        dialog.tab = "General";
        dialog.jumpTo(App.settings.item("emulator:Lime3DS"));
        tryVerify(() => find(dialog.page, item => item instanceof EmulatorRow && item.highlighted) !== null);
        const row = find(dialog.page, item => item instanceof EmulatorRow && item.highlighted);
        tryVerify(() => {
            const place = row.mapToItem(dialog.page, 0, 0).y;
            return place >= 0 && place + 30 < dialog.page.height;
        });
        dialog.close();
    }
    function test_aThemeChangesTheColoursAtOnce() {
        const dialog = settings();
        dialog.tab = "General";
        const before = String(Theme.window);
        const box = find(dialog.page, item => item instanceof AppComboBox && item.label === "Theme");
        verify(box !== null);
        box.forceActiveFocus();
        keyClick(Qt.Key_Down);
        compare(App.appearance.theme, "Retro Purple");
        compare(setup.stored("appTheme"), "Retro Purple");
        verify(String(Theme.window) !== before);
        keyClick(Qt.Key_Up);
        compare(App.appearance.theme, "System");
        dialog.close();
    }
    function test_everyTabSaysWhatItIs() {
        const dialog = settings();
        for (const tab of App.settings.tabs) {
            dialog.tab = tab;
            wait(0);
            const missing = App.settings.missingText(tab);
            verify(missing !== "" || App.settings.itemsOf(tab).length > 0 || tab === "Dependencies", tab);
            compare(find(dialog.page, item => item instanceof MissingPart && item.visible) !== null, missing !== "", tab);
        }
        dialog.close();
    }
    function test_statisticsSayWhatWasPlayed() {
        window.showStatistics();
        const dialog = window.statisticsWindow;
        tryVerify(() => App.statistics.ready);
        const has = text => find(dialog.contentItem, item => item instanceof AppText && item.visible && item.text === text) !== null;
        tryVerify(() => has("No games played yet"));
        verify(has("No data yet"));
        verify(has("0m"));
        setup.play(5400);
        tryVerify(() => has("1h 30m"));
        verify(!has("No games played yet"));
        verify(!has("No data yet"));
        dialog.close();
        tryVerify(() => !App.statistics.watching);
    }
}
