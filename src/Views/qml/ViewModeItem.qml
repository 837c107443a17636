import Ludarium

AppMenuItem {
    choice: true
    chosen: App.browse.viewMode === text
    onTriggered: App.browse.viewMode = text
}
