import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// Every command of the menus with its key, in one place.
Item {
    id: commands

    readonly property bool free: !App.dialogs.active && !App.start.visible
    readonly property bool hasGame: App.detail.hasGame

    signal searchWanted
    signal sidebarFilterWanted
    signal logsWanted
    signal aboutWanted

    property Action about: Action {
        text: qsTr("About Ludarium")
        onTriggered: commands.aboutWanted()
    }
    property Action quit: Action {
        text: qsTr("Quit")
        shortcut: "Ctrl+Q"
        onTriggered: Qt.quit()
    }
    property Action refresh: Action {
        text: qsTr("Refresh Library")
        shortcut: "Ctrl+R"
        enabled: commands.free && App.library.folder !== ""
        onTriggered: App.refreshLibrary()
    }
    property Action open: Action {
        text: qsTr("Select Collection Folder...")
        shortcut: "Ctrl+Shift+O"
        enabled: commands.free
        onTriggered: App.chooseCollection()
    }
    property Action showAll: Action {
        text: qsTr("Show All Games")
        shortcut: "Ctrl+1"
        enabled: commands.free
        onTriggered: App.browse.clearFilters()
    }
    property Action find: Action {
        text: qsTr("Find...")
        shortcut: "Ctrl+F"
        enabled: commands.free
        onTriggered: commands.searchWanted()
    }
    property Action toggleSidebar: Action {
        text: App.sidebar.shown ? qsTr("Hide Sidebar") : qsTr("Show Sidebar")
        shortcut: "Ctrl+Alt+S"
        enabled: commands.free
        onTriggered: App.sidebar.shown = !App.sidebar.shown
    }
    property Action filterSidebar: Action {
        text: qsTr("Filter Sidebar...")
        shortcut: "Ctrl+Alt+F"
        enabled: commands.free
        onTriggered: commands.sidebarFilterWanted()
    }
    property Action play: Action {
        text: qsTr("Play Selected Game")
        shortcut: "Ctrl+Return"
        enabled: commands.free && commands.hasGame
        onTriggered: App.launch.playSelected()
    }
    property Action openFolder: Action {
        text: qsTr("Open Game Folder")
        shortcut: "Ctrl+Shift+F"
        enabled: commands.free && commands.hasGame
        onTriggered: App.launch.openSelectedFolder()
    }
    property Action logs: Action {
        text: qsTr("Show Logs")
        shortcut: "Ctrl+Shift+L"
        onTriggered: commands.logsWanted()
    }
    property Action revealLogs: Action {
        text: qsTr("Show Logs in %1").arg(App.fileManagerName)
        onTriggered: App.log.reveal()
    }
    property Action copyLogs: Action {
        text: qsTr("Copy Logs to Clipboard")
        onTriggered: App.log.copyAll()
    }
    property Action clearLogs: Action {
        text: qsTr("Clear Logs")
        onTriggered: App.log.clear()
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        enabled: commands.free
        onActivated: App.chooseCollection()
    }
}
