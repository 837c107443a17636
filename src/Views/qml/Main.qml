import QtQuick
import QtQuick.Controls.Basic
import Ludarium

ApplicationWindow {
    id: window

    property bool sidebarShown: true
    property bool detailShown: true
    readonly property bool narrow: width < 1060
    property alias logWindow: logs.item

    width: 1280
    height: 800
    minimumWidth: 900
    minimumHeight: 600
    title: qsTr("Ludarium")
    color: Theme.window
    visible: false

    function showLogs() {
        logs.active = true;
        logs.item.show();
        logs.item.raise();
        logs.item.requestActivate();
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
            implicitWidth: 4
            color: SplitHandle.hovered || SplitHandle.pressed ? Theme.border : Theme.transparent
        }

        Sidebar {
            visible: window.sidebarShown
            SplitView.preferredWidth: window.narrow ? 190 : 240
            SplitView.minimumWidth: 160
            SplitView.maximumWidth: 400
        }
        BrowsePage {
            id: browsePage

            SplitView.fillWidth: true
            SplitView.minimumWidth: 320
            sidebarShown: window.sidebarShown
            detailShown: window.detailShown
            onSidebarToggled: window.sidebarShown = !window.sidebarShown
            onDetailToggled: window.detailShown = !window.detailShown
        }
        DetailPane {
            visible: window.detailShown && App.library.gameCount > 0
            SplitView.preferredWidth: window.narrow ? 270 : 340
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
        target: App.start
        function onFolderNeeded() {
            App.chooseCollection();
        }
    }
    onClosing: Qt.quit()
    Component.onCompleted: browsePage.focusGames()
}
