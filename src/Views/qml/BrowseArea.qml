import QtQuick
import QtQuick.Templates as T
import Ludarium

// The games, or what to do when there are none.
FocusScope {
    id: area

    required property Commands commands
    readonly property bool hasRows: App.browse.games.count > 0
    readonly property string mode: App.browse.viewMode
    readonly property bool grouped: App.browse.grouped

    // Whether the keyboard has gone there; false when it is there already.
    function focusGames(): bool {
        const view = games.item as Item;
        if (!view || view.activeFocus)
            return false;
        view.forceActiveFocus();
        return true;
    }
    function openMenu(item: Item) {
        if (!App.game.hasGame)
            return;
        // The toolbar may get higher with the selection that opens the menu, and the area smaller: the menu stands in
        // the window.
        const overlay = T.Overlay.overlay;
        const at = item ? item.mapToItem(overlay, Theme.space24, Theme.space24) : null;
        if (at)
            menu.popup(overlay, at.x, at.y);
        else
            menu.popup(overlay);
    }

    Loader {
        id: games

        anchors.fill: parent
        focus: true
        opacity: App.library.unavailable === "" ? 1 : Theme.awayOpacity
        active: area.hasRows
        sourceComponent: area.mode === "List" ? (area.grouped ? groupTable : table) : area.mode === "Coverflow" ? (area.grouped ? groupCoverflow : coverflow) : area.grouped ? groupGrid : grid
    }
    GameContextMenu {
        id: menu

        commands: area.commands
    }
    Component {
        id: grid

        GameGridView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }
    Component {
        id: groupGrid

        GameGroupGridView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }
    Component {
        id: table

        GameTableView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }
    Component {
        id: groupTable

        GameGroupTableView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }
    Component {
        id: coverflow

        CoverflowView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }
    Component {
        id: groupCoverflow

        CoverflowGroupView {
            focus: true
            onMenuWanted: item => area.openMenu(item)
        }
    }

    EmptyState {
        anchors.fill: parent
        visible: App.library.state === "none"
        iconName: "folder"
        title: qsTr("Open your collection")
        text: qsTr("Choose the folder that holds your games: an eXo collection, or one of your own.")
        actionText: qsTr("Select Collection Folder...")
        onActed: App.chooseCollection()
    }
    EmptyState {
        anchors.fill: parent
        visible: App.library.state === "away"
        iconName: "warning"
        title: qsTr("Your collection is not there")
        text: qsTr("Connect its drive and try again, or choose another folder.")
        actionText: qsTr("Select Another Folder...")
        onActed: App.chooseCollection()
    }
    EmptyState {
        anchors.fill: parent
        visible: App.library.state === "empty"
        iconName: "library"
        title: qsTr("No games here yet")
        text: qsTr("%1 holds no games that can be shown.").arg(App.library.folder)
        actionText: qsTr("Select Another Folder...")
        onActed: App.chooseCollection()
    }
    EmptyState {
        anchors.fill: parent
        visible: App.library.state === "error"
        iconName: "warning"
        title: qsTr("The collection could not be loaded")
        text: App.library.errorMessage + "\n" + App.library.folder
        actionText: qsTr("Select Another Folder...")
        onActed: App.chooseCollection()
    }
    EmptyState {
        anchors.fill: parent
        visible: App.library.state === "ready" && !area.hasRows
        iconName: "search"
        title: qsTr("No games found")
        text: App.browse.searchText === "" ? qsTr("There are no games in \"%1\".").arg(App.browse.title) : qsTr("Nothing in \"%1\" matches \"%2\".").arg(App.browse.title).arg(App.browse.searchText)
        actionText: qsTr("Show All Games")
        onActed: {
            App.browse.searchText = "";
            App.browse.clearFilters();
        }
    }
    CollectionLoadingOverlay {
        anchors.fill: parent
        visible: App.library.state === "loading" && !App.start.visible
    }
}
