import Ludarium

AppMenuItem {
    choice: true
    chosen: App.appearance.theme === text
    onTriggered: App.appearance.theme = text
}
