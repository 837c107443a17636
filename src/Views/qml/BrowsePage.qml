import QtQuick
import Ludarium

// The toolbar over the games.
FocusScope {
    id: page

    property alias sidebarShown: toolbar.sidebarShown
    property alias detailShown: toolbar.detailShown
    readonly property SearchField search: toolbar.search
    signal sidebarToggled
    signal detailToggled

    function focusGames() {
        area.focusGames();
    }

    BrowseToolbar {
        id: toolbar

        width: parent.width
        onSidebarToggled: page.sidebarToggled()
        onDetailToggled: page.detailToggled()
        onSearchLeft: area.focusGames()
    }
    BrowseArea {
        id: area

        focus: true
        anchors.top: toolbar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
