import Ludarium

AppMenuItem {
    required property int progress

    choice: true
    chosen: App.game.progress === progress
    text: App.game.progressTexts[progress]
    onTriggered: App.game.setProgress(progress)
}
