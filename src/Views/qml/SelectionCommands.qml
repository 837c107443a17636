import QtQuick
import Ludarium

// The commands for the selected game, and whether any command can be used now.
Item {
    id: commands

    // Whether something lies over the window that has to be answered or left first.
    required property bool covered
    readonly property bool free: !covered && !App.dialogs.active && !App.dialogs.choosingFolder && !App.start.visible
    readonly property bool hasGame: App.game.hasGame
    readonly property bool mayStart: free && hasGame && !App.launch.launching

    // Why nothing can be done with the selected game; `reason` is that of the game itself.
    function why(reason: string, starts: bool): string {
        return !hasGame ? qsTr("Select a game first.") : starts && App.launch.launching ? qsTr("A game is being started.") : reason;
    }

    property Command play: Command {
        text: qsTr("Play Selected Game")
        shortcut: "Ctrl+Return"
        enabled: commands.mayStart && App.detail.actions.playReason === ""
        reason: commands.why(App.detail.actions.playReason, true)
        onTriggered: App.launch.playSelected()
    }
    // The entry is disabled, with its reason; the key says it too.
    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: commands.mayStart && App.running.selected
        onActivated: App.launch.playSelected()
    }
    property Command setUp: Command {
        text: App.game.setupButtonTitle
        enabled: commands.mayStart && App.detail.actions.setupReason === ""
        reason: commands.why(App.detail.actions.setupReason, true)
        onTriggered: App.launch.setUpSelected()
    }
    property Command versions: Command {
        text: qsTr("Versions...")
        enabled: commands.mayStart && App.detail.actions.versionsReason === ""
        reason: commands.why(App.detail.actions.versionsReason, true)
        onTriggered: App.launch.chooseVersion()
    }
    property Command toggleFavorite: Command {
        text: qsTr("Toggle Favorite")
        shortcut: "Ctrl+D"
        enabled: commands.free && commands.hasGame
        reason: commands.why("", false)
        onTriggered: App.game.toggleFavorite()
    }
    property Command openFolder: Command {
        text: qsTr("Open Game Folder")
        shortcut: "Ctrl+Shift+F"
        enabled: commands.free && commands.hasGame && App.detail.actions.folderReason === ""
        reason: commands.why(App.detail.actions.folderReason, false)
        onTriggered: App.launch.openSelectedFolder()
    }
    property Command refreshImages: Command {
        text: qsTr("Refresh Images")
        enabled: commands.free && commands.hasGame
        reason: commands.why("", false)
        onTriggered: App.detail.clearImageCache()
    }
}
