import QtQuick
import Ludarium

// The games, or what to do when there are none.
FocusScope {
    id: area

    readonly property bool hasRows: App.browse.games.count > 0

    function focusGames() {
        if (games.item)
            (games.item as Item).forceActiveFocus();
    }

    Loader {
        id: games

        anchors.fill: parent
        focus: true
        active: area.hasRows
        sourceComponent: App.browse.viewMode === "List" ? table : grid
    }
    Component {
        id: grid

        GameGridView {
            focus: true
        }
    }
    Component {
        id: table

        GameTableView {
            focus: true
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
