import Ludarium

AppMenuItem {
    choice: true
    chosen: App.browse.gridSize === text
    onTriggered: App.browse.gridSize = text
}
