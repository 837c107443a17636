import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

ApplicationWindow {
    id: window

    property bool sidebarShown: true
    property bool detailShown: true
    // The pane takes no room before the first game is selected, and from then on stays.
    property bool detailUsed: App.detail.hasGame
    readonly property bool narrow: width < 1060
    readonly property LogWindow logWindow: logs.item as LogWindow

    width: 1280
    height: 800
    minimumWidth: 900
    minimumHeight: 600
    title: qsTr("Ludarium")
    color: Theme.window
    visible: false

    function showLogs() {
        logs.active = true;
        logWindow.show();
        logWindow.raise();
        logWindow.requestActivate();
    }
    function showAbout() {
        about.open();
    }
    function focusSearch() {
        browsePage.search.forceActiveFocus(Qt.ShortcutFocusReason);
        browsePage.search.selectAll();
    }

    Commands {
        id: commands

        onSearchWanted: window.focusSearch()
        onLogsWanted: window.showLogs()
        onAboutWanted: window.showAbout()
    }
    menuBar: AppMenuBar {
        commands: commands
    }

    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
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
            visible: window.sidebarShown
            SplitView.preferredWidth: (window.narrow ? 190 : 240) * Math.min(Theme.textScale, 1.4)
            SplitView.minimumWidth: 160
            SplitView.maximumWidth: 400
        }
        BrowsePage {
            id: browsePage

            commands: commands
            focus: true
            SplitView.fillWidth: true
            SplitView.minimumWidth: 320
            sidebarShown: window.sidebarShown
            detailShown: window.detailShown && window.detailUsed
            onSidebarToggled: window.sidebarShown = !window.sidebarShown
            onDetailToggled: {
                window.detailShown = !browsePage.detailShown;
                window.detailUsed = true;
            }
        }
        DetailPane {
            visible: window.detailShown && window.detailUsed && App.library.gameCount > 0
            SplitView.preferredWidth: (window.narrow ? 270 : 340) * Math.min(Theme.textScale, 1.2)
            SplitView.minimumWidth: 240
            SplitView.maximumWidth: 560
        }
    }
    footer: StatusBar {}

    ToastArea {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.space16
        z: 5
    }
    ThumbnailSheet {}
    AlertDialog {}
    FolderChooser {}
    AboutDialog {
        id: about
    }
    SplashScreen {
        parent: window.contentItem.parent
        anchors.fill: parent
        z: 10
    }
    Loader {
        id: logs

        active: false
        sourceComponent: LogWindow {}
    }
    Connections {
        target: App.detail
        function onChanged() {
            if (App.detail.hasGame)
                window.detailUsed = true;
        }
    }
    Connections {
        target: App.start
        function onFolderNeeded() {
            App.chooseCollection();
        }
    }
    onClosing: Qt.quit()
}
