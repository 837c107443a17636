import QtQuick
import Ludarium

// Setup, versions, favourite and folder of the game.
Grid {
    id: row

    // Two a row where large letters leave no room for four.
    columns: width < 250 * Theme.textScale ? 2 : 4
    spacing: Theme.space4

    readonly property real cell: (width - (columns - 1) * spacing) / columns

    DetailAction {
        width: row.cell
        iconName: "gearshape.fill"
        text: qsTr("Setup")
        reason: App.detail.actions.setupReason
        available: !App.launch.launching
        onClicked: App.launch.setUpSelected()
    }
    DetailAction {
        width: row.cell
        iconName: "layers"
        text: qsTr("Versions")
        reason: App.detail.actions.versionsReason
        available: !App.launch.launching
        onClicked: App.launch.chooseVersion()
    }
    DetailAction {
        width: row.cell
        iconName: checked ? "heart.solid" : "heart"
        text: qsTr("Favorite")
        checked: App.game.favorite
        onClicked: App.game.toggleFavorite()
    }
    DetailAction {
        width: row.cell
        iconName: "folder"
        text: qsTr("Folder")
        reason: App.detail.actions.folderReason
        onClicked: App.launch.openSelectedFolder()
    }
}
