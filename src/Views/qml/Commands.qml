import QtQuick
import Ludarium

// Every command of the menus with its key; those for the selected game stand in what this grows from.
SelectionCommands {
    id: commands

    signal searchWanted
    signal sidebarFilterWanted
    signal detailsToggled
    signal settingsWanted
    signal statisticsWanted
    signal folderWanted
    signal logsWanted
    signal aboutWanted

    property Command about: Command {
        text: qsTr("About Ludarium")
        enabled: commands.free
        onTriggered: commands.aboutWanted()
    }
    property Command settings: Command {
        text: qsTr("Settings...")
        shortcut: "Ctrl+,"
        enabled: commands.free
        onTriggered: commands.settingsWanted()
    }
    property Command statistics: Command {
        text: qsTr("Statistics")
        enabled: commands.free
        onTriggered: commands.statisticsWanted()
    }
    property Command checkForUpdates: Command {
        text: qsTr("Check for Updates...")
        enabled: false
        reason: qsTr("Checking for updates is not available in this version.")
    }
    property Command quit: Command {
        text: qsTr("Quit")
        shortcut: "Ctrl+Q"
        onTriggered: Qt.quit()
    }
    property Command refresh: Command {
        text: qsTr("Refresh Library")
        shortcut: "Ctrl+R"
        enabled: commands.free && App.library.folder !== ""
        onTriggered: App.refreshLibrary()
    }
    property Command open: Command {
        text: qsTr("Select Collection Folder...")
        shortcut: "Ctrl+Shift+O"
        enabled: commands.free
        onTriggered: commands.folderWanted()
    }
    property Command addCollection: Command {
        text: qsTr("Add Collection...")
        enabled: false
        reason: qsTr("Adding a second collection is not available in this version.")
    }
    property Command runSetup: Command {
        text: qsTr("Run Setup...")
        enabled: false
        reason: qsTr("The setup of collections is not available in this version.")
    }
    property Command importRoms: Command {
        text: qsTr("Import ROMs...")
        shortcut: "Ctrl+Shift+I"
        enabled: false
        reason: qsTr("The import of ROMs is not available in this version.")
    }
    property Command showAll: Command {
        text: qsTr("Show All Games")
        shortcut: "Ctrl+1"
        enabled: commands.free
        onTriggered: App.browse.clearFilters()
    }
    property Command showFavorites: Command {
        text: qsTr("Show Favorites")
        shortcut: "Ctrl+2"
        enabled: commands.free
        onTriggered: App.browse.showFavorites()
    }
    property Command showRecent: Command {
        text: qsTr("Show Recently Played")
        shortcut: "Ctrl+3"
        enabled: commands.free
        onTriggered: App.browse.showRecentlyPlayed()
    }
    property Command showInstalled: Command {
        text: qsTr("Show Installed Only")
        shortcut: "Ctrl+I"
        enabled: commands.free
        onTriggered: App.browse.toggleInstalledOnly()
    }
    property Command startScreensaver: Command {
        text: qsTr("Start Screensaver")
        shortcut: "Ctrl+Shift+S"
        enabled: false
        reason: qsTr("The screensaver is not available in this version.")
    }
    property Command details: Command {
        text: qsTr("Show Details")
        shortcut: "Ctrl+Shift+D"
        enabled: commands.free
        onTriggered: commands.detailsToggled()
    }
    property Command groupDuplicates: Command {
        text: qsTr("Group Duplicates")
        enabled: commands.free
        onTriggered: App.browse.grouped = !App.browse.grouped
    }
    property Command find: Command {
        text: qsTr("Find...")
        shortcut: "Ctrl+F"
        enabled: commands.free
        onTriggered: commands.searchWanted()
    }
    property Command toggleSidebar: Command {
        text: App.sidebar.shown ? qsTr("Hide Sidebar") : qsTr("Show Sidebar")
        shortcut: "Ctrl+Alt+S"
        enabled: commands.free
        onTriggered: App.sidebar.shown = !App.sidebar.shown
    }
    property Command filterSidebar: Command {
        text: qsTr("Filter Sidebar...")
        shortcut: "Ctrl+Alt+F"
        enabled: commands.free
        onTriggered: commands.sidebarFilterWanted()
    }
    property Command batch: Command {
        text: qsTr("Batch Operations...")
        shortcut: "Ctrl+Shift+B"
        enabled: false
        reason: qsTr("Batch operations are not available in this version.")
    }
    property Command quiz: Command {
        text: qsTr("Play the Quiz")
        enabled: App.pages.isAvailable("quiz")
        reason: qsTr("This build names no such page.")
        onTriggered: App.pages.open("quiz")
    }
    property Command musicPlay: Command {
        text: qsTr("Play")
        shortcut: "Space"
        enabled: false
        reason: qsTr("Music is not available in this version.")
    }
    property Command musicNext: Command {
        text: qsTr("Next Track")
        shortcut: "Ctrl+Alt+Right"
        enabled: false
        reason: qsTr("Music is not available in this version.")
    }
    property Command musicPrevious: Command {
        text: qsTr("Previous Track")
        shortcut: "Ctrl+Alt+Left"
        enabled: false
        reason: qsTr("Music is not available in this version.")
    }
    property Command musicEnabled: Command {
        text: qsTr("Enable Background Music")
        enabled: false
        reason: qsTr("Music is not available in this version.")
    }
    property Command logs: Command {
        text: qsTr("Show Logs")
        shortcut: "Ctrl+Shift+L"
        enabled: commands.free
        onTriggered: commands.logsWanted()
    }
    property Command revealLogs: Command {
        text: qsTr("Show Logs in %1").arg(App.fileManagerName)
        enabled: commands.free
        onTriggered: App.log.reveal()
    }
    property Command copyLogs: Command {
        text: qsTr("Copy Logs to Clipboard")
        enabled: commands.free
        onTriggered: App.log.copyAll()
    }
    property Command uploadLogs: Command {
        text: qsTr("Upload Logs for Analysis...")
        enabled: commands.free && !App.logUpload.unavailable
        reason: App.logUpload.unavailable
        onTriggered: App.logUpload.upload()
    }
    property Command clearLogs: Command {
        text: qsTr("Clear Logs")
        enabled: commands.free
        onTriggered: App.log.clear()
    }
    property Command help: Command {
        text: qsTr("Ludarium Help")
        enabled: App.pages.isAvailable("help")
        reason: qsTr("This build names no such page.")
        onTriggered: App.pages.open("help")
    }
    property Command reportBug: Command {
        text: qsTr("Submit a Bug...")
        enabled: App.pages.isAvailable("bug")
        reason: qsTr("This build names no such page.")
        onTriggered: App.pages.open("bug")
    }
    property Command contactSupport: Command {
        text: qsTr("Contact Support...")
        enabled: App.pages.isAvailable("support")
        reason: qsTr("This build names no such page.")
        onTriggered: App.pages.open("support")
    }

    Shortcut {
        sequences: ["Ctrl+O"]
        enabled: commands.free
        onActivated: commands.folderWanted()
    }
}
