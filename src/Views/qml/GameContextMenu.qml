import QtQml.Models
import Ludarium

// What can be done with the selected game.
AppMenu {
    id: menu

    required property Commands commands
    property var variants: []

    title: qsTr("Game")
    onAboutToShow: variants = App.game.variants()

    AppMenuItem {
        action: menu.commands.play
    }
    AppMenuItem {
        action: menu.commands.setUp
    }
    AppMenuItem {
        action: menu.commands.versions
    }
    AppMenu {
        id: versions

        title: qsTr("Variants")
        enabled: menu.variants.length > 0
        reason: App.browse.grouped ? qsTr("This game has only one variant.") : qsTr("Variants are shown while duplicates are grouped.")

        Instantiator {
            model: menu.variants
            delegate: AppMenuItem {
                required property var modelData

                choice: true
                chosen: modelData.id === App.game.gameId
                text: modelData.text
                onTriggered: App.game.selectVariant(modelData.id)
            }
            onObjectAdded: (index, object) => versions.insertItem(index, object)
            onObjectRemoved: (index, object) => versions.removeItem(object)
        }
    }
    AppMenuSeparator {}
    AppMenuItem {
        action: menu.commands.toggleFavorite
    }
    AppMenu {
        title: qsTr("Rating")

        RatingItem {
            stars: 0
        }
        RatingItem {
            stars: 1
        }
        RatingItem {
            stars: 2
        }
        RatingItem {
            stars: 3
        }
        RatingItem {
            stars: 4
        }
        RatingItem {
            stars: 5
        }
    }
    AppMenu {
        title: qsTr("Progress")

        ProgressItem {
            progress: 0
        }
        ProgressItem {
            progress: 1
        }
        ProgressItem {
            progress: 2
        }
        ProgressItem {
            progress: 3
        }
        ProgressItem {
            progress: 4
        }
    }
    AppMenuSeparator {}
    AppMenuItem {
        action: menu.commands.openFolder
    }
    AppMenuItem {
        action: menu.commands.refreshImages
    }
    AppMenuItem {
        text: qsTr("Show All of %1").arg(App.game.platform)
        onTriggered: App.game.showPlatform()
    }
    AppMenuItem {
        enabled: App.game.developer !== ""
        why: qsTr("The developer of this game is not known.")
        text: App.game.developer === "" ? qsTr("Show All of the Developer") : qsTr("Show All of %1").arg(App.game.developer)
        onTriggered: App.game.showDeveloper()
    }
    AppMenuItem {
        text: qsTr("Copy Title")
        onTriggered: App.game.copyTitle()
    }
}
