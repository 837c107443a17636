import Ludarium

AppMenuItem {
    choice: true
    chosen: App.browse.sortOrder === text
    onTriggered: App.browse.sortOrder = text
}
