import QtQuick
import Ludarium

// The toolbar over the games.
FocusScope {
    id: page

    required property Commands commands
    property alias sidebarShown: toolbar.sidebarShown
    property alias detailShown: toolbar.detailShown
    readonly property SearchField search: toolbar.search
    signal sidebarToggled
    signal detailToggled

    function focusGames(): bool {
        return area.focusGames();
    }

    BrowseToolbar {
        id: toolbar

        width: parent.width
        onSidebarToggled: page.sidebarToggled()
        onDetailToggled: page.detailToggled()
        onSearchLeft: area.focusGames()
    }
    FacetChips {
        id: chips

        anchors.top: toolbar.bottom
        width: parent.width
    }
    AwayNotice {
        id: away

        anchors.top: chips.visible ? chips.bottom : toolbar.bottom
        width: parent.width
    }
    BrowseArea {
        id: area

        commands: page.commands
        focus: true
        anchors.top: away.bottom
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
