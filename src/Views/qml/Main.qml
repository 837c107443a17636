import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

AppWindow {
    id: window

    property bool detailShown: true
    // The pane takes no room before the first game is selected, and from then on stays.
    property bool detailUsed: false
    readonly property bool narrow: width < 1060
    readonly property AppWindow logWindow: parts.logWindow
    readonly property AppWindow settingsWindow: parts.settingsWindow
    readonly property AppWindow statisticsWindow: parts.statisticsWindow
    readonly property FirstRunSetupView assistant: parts.assistant
    readonly property FolderPickerView folderPicker: parts.folderPicker
    readonly property alias commands: commands

    width: 1280
    height: 800
    minimumWidth: 900
    minimumHeight: 600
    title: qsTr("Ludarium")
    visible: false

    function showLogs() {
        parts.showLogs();
    }
    function showSettings() {
        parts.showSettings();
    }
    function showStatistics() {
        parts.showStatistics();
    }
    function showAssistant() {
        parts.showAssistant();
    }
    function showFolderPicker() {
        parts.showFolderPicker();
    }
    function showAbout() {
        parts.showAbout();
    }
    function focusSearch() {
        browsePage.search.forceActiveFocus(Qt.ShortcutFocusReason);
        browsePage.search.selectAll();
    }

    // A control that is hidden, by what it does or by another, keeps the keyboard out of sight.
    readonly property bool keyboardSeen: activeFocusItem?.visible ?? false
    onKeyboardSeenChanged: catcher.restart()
    Timer {
        id: catcher

        interval: 0
        onTriggered: {
            if (window.active && !window.keyboardSeen)
                browsePage.focusGames();
        }
    }

    function filterSidebar() {
        App.sidebar.shown = true;
        sidebar.focusFilter();
    }

    Commands {
        id: commands

        covered: window.covered
        onSearchWanted: window.focusSearch()
        onSidebarFilterWanted: window.filterSidebar()
        onDetailsToggled: browsePage.detailToggled()
        onSettingsWanted: window.showSettings()
        onStatisticsWanted: window.showStatistics()
        onFolderWanted: window.showFolderPicker()
        onLogsWanted: window.showLogs()
        onAboutWanted: window.showAbout()
    }
    menuBar: AppMenuBar {
        commands: commands
    }

    SplitView {
        id: panes

        anchors.fill: parent
        orientation: Qt.Horizontal
        // From wherever the keyboard is in the window, back to the games.
        Keys.onEscapePressed: event => event.accepted = browsePage.focusGames()
        onResizingChanged: {
            if (!resizing && sidebar.visible && Math.abs(sidebar.width - sidebar.wantedWidth) >= 1)
                App.sidebar.width = Math.round(sidebar.width / sidebar.scaling);
        }
        handle: Rectangle {
            id: handle

            implicitWidth: 1
            color: T.SplitHandle.hovered || T.SplitHandle.pressed ? Theme.accent : Theme.border
            // Wider to the mouse than to the eye.
            containmentMask: Item {
                x: -4
                width: 9
                height: handle.height
            }
        }

        Sidebar {
            id: sidebar

            readonly property real scaling: Math.min(Theme.textScale, 1.4)
            readonly property real wantedWidth: scaling * (App.sidebar.width > 0 ? App.sidebar.width : window.narrow ? 190 : 240)

            visible: App.sidebar.shown
            onGamesWanted: browsePage.focusGames()
            SplitView.preferredWidth: wantedWidth
            SplitView.minimumWidth: 160
            SplitView.maximumWidth: 400 * scaling
        }
        BrowsePage {
            id: browsePage

            commands: commands
            focus: true
            SplitView.fillWidth: true
            SplitView.minimumWidth: 320
            sidebarShown: App.sidebar.shown
            detailShown: window.detailShown && window.detailUsed
            onSidebarToggled: App.sidebar.shown = !App.sidebar.shown
            onDetailToggled: {
                window.detailShown = !browsePage.detailShown;
                window.detailUsed = true;
            }
        }
        OnDemand {
            wanted: visible
            visible: window.detailShown && window.detailUsed && App.library.gameCount > 0
            // What the sidebar and the games need comes first.
            SplitView.preferredWidth: Math.max(240, Math.min(360 * Math.min(Theme.textScale, 1.2), window.width - (App.sidebar.shown ? sidebar.width : 0) - 350))
            SplitView.minimumWidth: 240
            SplitView.maximumWidth: 560
            sourceComponent: DetailPane {
                onClosed: window.detailShown = false // qmllint disable unqualified
            }
        }
    }
    footer: StatusBar {}

    ToastArea {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.space16
        z: 5
    }
    FolderDrop {
        anchors.fill: parent
        z: -1
    }
    MainParts {
        id: parts

        window: window
    }
    SplashScreen {
        parent: window.contentItem.parent
        anchors.fill: parent
        z: 10
    }
    // The games move to make room for the pane: not between the two clicks of one who starts a game.
    function makeRoomForDetails() {
        if (App.detail.hasGame && !App.browse.clicking)
            detailUsed = true;
    }
    Component.onCompleted: makeRoomForDetails()
    Connections {
        target: App.detail
        function onChanged() {
            window.makeRoomForDetails();
        }
    }
    Connections {
        target: App.browse
        function onClickingChanged() {
            window.makeRoomForDetails();
        }
    }
    Connections {
        target: App.start
        function onFolderNeeded() {
            window.showFolderPicker();
        }
        function onFirstRunNeeded() {
            window.showAssistant();
        }
    }
    Connections {
        target: App.settings
        function onAssistantWanted() {
            window.showAssistant();
        }
    }
    onClosing: Qt.quit()
}
