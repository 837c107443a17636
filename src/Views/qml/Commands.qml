import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// Every command of the menus with its key, in one place.
Item {
    id: commands

    // Whether a sheet over the window waits for an answer.
    property bool sheetOpen: false
    readonly property bool free: !App.dialogs.active && !App.start.visible && !sheetOpen
    readonly property bool hasGame: App.detail.hasGame

    signal searchWanted
    signal settingsWanted
    signal statisticsWanted
    signal folderWanted
    signal logsWanted
    signal aboutWanted

    property Action about: Action {
        text: qsTr("About Ludarium")
        onTriggered: commands.aboutWanted()
    }
    property Action settings: Action {
        text: qsTr("Settings...")
        shortcut: "Ctrl+,"
        enabled: commands.free
        onTriggered: commands.settingsWanted()
    }
    property Action statistics: Action {
        text: qsTr("Statistics")
        enabled: commands.free
        onTriggered: commands.statisticsWanted()
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
        onTriggered: commands.folderWanted()
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
    property Action uploadLogs: Action {
        text: qsTr("Upload Logs for Analysis...")
        enabled: commands.free && !App.logUpload.uploading
        onTriggered: App.logUpload.upload()
    }
    property Action clearLogs: Action {
        text: qsTr("Clear Logs")
        onTriggered: App.log.clear()
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        enabled: commands.free
        onActivated: commands.folderWanted()
    }
}
