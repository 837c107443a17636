import QtQuick
import QtQuick.Templates as T
import QtTest
import Ludarium

TestCase {
    id: test

    name: "DetailPane"
    when: windowShown

    property Main window: null
    readonly property string everything: "Winter Lantern"
    readonly property string grouped: "Copper Meridian (CD Version)"

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
        verify(setup.showDetails(everything));
        tryVerify(() => !App.detail.media.loading && !App.detail.extras.loading);
        setup.takeOpened();
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
    function pane() {
        return find(window.contentItem, item => item instanceof DetailPane);
    }
    function inPane(name, type) {
        return find(pane(), item => item.visible && item.Accessible.name === name && (!type || item instanceof type));
    }
    function focused(item) {
        verify(item !== null);
        item.forceActiveFocus(Qt.TabFocusReason);
        tryVerify(() => item.activeFocus);
        return item;
    }

    function test_theRatingFollowsTheKeys_data() {
        return [
            {
                "tag": "a digit sets it",
                "keys": [Qt.Key_3],
                "rating": 3
            },
            {
                "tag": "arrows go by one",
                "keys": [Qt.Key_3, Qt.Key_Right, Qt.Key_Right, Qt.Key_Left],
                "rating": 4
            },
            {
                "tag": "right stops at five",
                "keys": [Qt.Key_5, Qt.Key_Right],
                "rating": 5
            },
            {
                "tag": "delete takes it back",
                "keys": [Qt.Key_4, Qt.Key_Delete],
                "rating": 0
            }
        ];
    }
    function test_theRatingFollowsTheKeys(data) {
        App.game.setRating(0);
        const stars = focused(find(pane(), item => item instanceof RatingStars));
        for (const key of data.keys)
            keyClick(key);
        compare(App.game.rating, data.rating);
        compare(stars.Accessible.name.includes(String(data.rating)), data.rating > 0);
        verify(stars.activeFocus);
    }
    function test_aStarIsSetByTheMouseAndTakenBackByItself() {
        App.game.setRating(0);
        const stars = find(pane(), item => item instanceof RatingStars);
        const star = find(stars, item => item instanceof RatingStar && item.index === 1);
        mouseClick(star);
        compare(App.game.rating, 2);
        mouseClick(star);
        compare(App.game.rating, 0);
    }
    function test_theProgressMenuSaysHowFarTheUserHasCome() {
        App.game.setProgress(0);
        focused(inPane("Progress: Not Played"));
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        compare(App.game.progress, 2);
        verify(inPane("Progress: Beaten") !== null);
    }
    function test_notesAreKept_data() {
        return [
            {
                "tag": "when the keyboard leaves the field",
                "leave": () => keyClick(Qt.Key_Tab)
            },
            {
                "tag": "when the writing pauses",
                "leave": () => {}
            },
            {
                "tag": "when another game is selected",
                "leave": () => setup.showDetails(test.grouped)
            }
        ];
    }
    function test_notesAreKept(data) {
        const id = App.detail.gameId;
        const editor = focused(inPane("Your notes"));
        editor.selectAll();
        keyClick(Qt.Key_Delete);
        for (const letter of "oil")
            keyClick(letter);
        const before = setup.savedNotes(id);
        verify(before !== "oil");
        data.leave();
        tryVerify(() => setup.savedNotes(id) === "oil");
        if (editor.activeFocus && App.detail.gameId === id) {
            compare(editor.cursorPosition, 3);
            keyClick("s");
            compare(editor.text, "oils");
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Tab);
        }
        if (App.detail.gameId !== id)
            compare(editor.text, "");
        verify(setup.showDetails(test.everything));
        compare(editor.text, "oil");
        App.detail.editNotes("");
        App.detail.saveNotes();
        compare(setup.savedNotes(id), "");
    }
    function test_aChipNarrowsTheGamesToItsValueAlone_data() {
        return [
            {
                "tag": "Show only ScummVM",
                "title": "Copper Meridian",
                "count": 1
            },
            {
                "tag": "Show only 1994",
                "title": everything,
                "count": 7
            },
            {
                "tag": "Show only Northlight Software",
                "title": everything,
                "count": 7
            },
            {
                "tag": "Genre: Adventure",
                "title": everything,
                "count": 7
            }
        ];
    }
    function test_aChipNarrowsTheGamesToItsValueAlone(data) {
        App.browse.searchText = "";
        verify(setup.showDetails(data.title));
        const id = App.detail.gameId;
        focused(inPane(data.tag));
        keyClick(Qt.Key_Return);
        verify(App.browse.filtered);
        tryCompare(App.detail, "gameId", id);
        compare(setup.shownGames(), data.count);
    }
    function test_thePrimaryButtonOffersWhatTheGameNeeds_data() {
        return [
            {
                "tag": "installed",
                "text": "Play",
                "enabled": true
            },
            {
                "tag": "compressed",
                "text": "Install",
                "enabled": false
            },
            {
                "tag": "downloadable",
                "text": "Download (12 MB)",
                "enabled": false
            }
        ];
    }
    function test_thePrimaryButtonOffersWhatTheGameNeeds(data) {
        setup.setStatus(App.detail.gameId, data.tag);
        const button = inPane(data.text + ": " + everything, AppButton);
        verify(button !== null);
        compare(button.enabled, data.enabled);
        // What cannot be done says why.
        compare(button.Accessible.description === "", data.enabled);
        setup.setStatus(App.detail.gameId, "");
    }
    function test_theFavoriteButtonToggles() {
        const was = App.game.favorite;
        focused(inPane("Favorite"));
        keyClick(Qt.Key_Space);
        compare(App.game.favorite, !was);
        keyClick(Qt.Key_Return);
        compare(App.game.favorite, was);
    }
    function test_aVariantIsShownInPlaceOfTheSelectedOne() {
        verify(setup.showDetails(grouped));
        tryVerify(() => App.detail.variants.list.length === 3);
        const button = find(pane(), item => item instanceof VariantButton && item.text === "Floppy Version");
        compare(button.help, "Copper Meridian (Floppy Version) - Floppy Version (Not installed)");
        focused(button);
        keyClick(Qt.Key_Return);
        tryCompare(App.detail, "title", "Copper Meridian (Floppy Version)");
        const chosen = find(pane(), item => item instanceof VariantButton && item.checked);
        compare(chosen.text, "Floppy Version");
    }
    function test_theVersionPicker_data() {
        return [
            {
                "tag": "launches nothing before an option is marked",
                "keys": [Qt.Key_Return],
                "open": true,
                "launched": false
            },
            {
                "tag": "launches the marked option",
                "keys": [Qt.Key_Down, Qt.Key_Down, Qt.Key_Return],
                "open": false,
                "launched": true
            },
            {
                "tag": "is left by escape",
                "keys": [Qt.Key_Down, Qt.Key_Escape],
                "open": false,
                "launched": false
            },
            {
                "tag": "is left by its Cancel button",
                "keys": [Qt.Key_Down, Qt.Key_Tab, Qt.Key_Space],
                "open": false,
                "launched": false
            }
        ];
    }
    function test_theVersionPicker(data) {
        verify(setup.showDetails(grouped));
        App.launch.checkVersionsAndLaunch();
        tryCompare(App.launch.versions, "active", true);
        compare(App.launch.versions.count, 3);
        tryVerify(() => {
            const list = find(window.T.Overlay.overlay, item => item.Accessible.name === "Versions");
            return list && list.activeFocus;
        });
        setup.takeLaunchedVersion();
        for (const key of data.keys)
            keyClick(key);
        compare(App.launch.versions.active, data.open);
        let launched = "";
        if (data.launched)
            tryVerify(() => (launched = launched || setup.takeLaunchedVersion()) !== "");
        else
            launched = setup.takeLaunchedVersion();
        compare(launched, data.launched ? "EGA with AdLib" : "");
        App.launch.versions.cancel();
        // A launch without an emulator asks for one, and then tells that there is none.
        tryVerify(() => {
            App.dialogs.dismiss();
            return !App.launch.launching && !App.dialogs.active && (!data.launched || App.launch.error !== "");
        });
    }
    function test_theViewerGoesThroughThePictures() {
        tryVerify(() => App.detail.media.count === 8);
        const strip = focused(inPane("Pictures"));
        strip.currentIndex = 1;
        keyClick(Qt.Key_Return);
        tryVerify(() => window.activeFocusItem && window.activeFocusItem instanceof GalleryPicture);
        const picture = window.activeFocusItem as GalleryPicture;
        compare(picture.index, 1);
        keyClick(Qt.Key_Right);
        compare(picture.index, 2);
        keyClick(Qt.Key_Space);
        verify(!picture.fitted);
        keyClick(Qt.Key_Left);
        verify(picture.fitted);
        keyClick(Qt.Key_Home);
        keyClick(Qt.Key_Left);
        compare(picture.index, 0);
        keyClick(Qt.Key_End);
        keyClick(Qt.Key_Right);
        compare(picture.index, 7);
        keyClick(Qt.Key_Escape);
        tryVerify(() => strip.activeFocus);
    }
    function test_whatLiesBesideAGameIsOpenedWithTheSystemsProgram_data() {
        return [
            {
                "tag": "Manual",
                "ends": "/Manuals/MS-DOS/winter.pdf"
            },
            {
                "tag": "Video",
                "ends": "/Videos/MS-DOS/Winter Lantern.mp4"
            },
            {
                "tag": "Music",
                "ends": "/Music/MS-DOS/Winter Lantern.mp3"
            },
            {
                "tag": "Advertisement.pdf, 2.0 kB",
                "ends": "/Extras/Advertisement.pdf"
            }
        ];
    }
    function test_whatLiesBesideAGameIsOpenedWithTheSystemsProgram(data) {
        const button = inPane(data.tag);
        focused(button);
        keyClick(Qt.Key_Return);
        let opened = [];
        tryVerify(() => (opened = opened.concat(setup.takeOpened())).length === 1);
        verify(opened[0].startsWith("file ") && opened[0].endsWith(data.ends), opened[0]);
    }
    function test_manyApplicationsAreFoldedAndComeIntoViewByKeyboard() {
        const last = "Chart of the bay, sheet 40";
        compare(inPane(last), null);
        focused(inPane("Show all 40"));
        keyClick(Qt.Key_Return);
        const entry = focused(inPane(last));
        tryVerify(() => {
            const y = entry.mapToItem(pane(), 0, 0).y;
            return y >= 0 && y + entry.height <= pane().height;
        });
        verify(!inPane("Soundtrack").enabled);
    }
    function test_theShortcutClosesAndOpensThePane() {
        verify(pane().visible);
        keyClick(Qt.Key_D, Qt.ControlModifier | Qt.ShiftModifier);
        verify(!pane().visible);
        keyClick(Qt.Key_D, Qt.ControlModifier | Qt.ShiftModifier);
        verify(pane().visible);
    }
}
