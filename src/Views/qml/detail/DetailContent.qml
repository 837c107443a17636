import QtQuick
import Ludarium

// What stands below the header of the detail pane, from what is done with a game to what lies beside it.
Column {
    id: content

    signal pictureOpened(int index)

    spacing: Theme.space16

    DetailTitle {
        width: parent.width
    }
    DetailChips {
        width: parent.width
    }
    LaunchBox {
        width: parent.width
    }
    GameExceptionsBanner {
        width: parent.width
    }
    VariantButtons {
        width: parent.width
    }
    Flow {
        width: parent.width
        spacing: Theme.space12

        RatingStars {
            value: App.game.rating
            onChosen: rating => App.game.setRating(rating)
        }
        ProgressButton {}
    }
    GalleryStrip {
        width: parent.width
        onOpened: index => content.pictureOpened(index)
    }
    MediaButtons {
        width: parent.width
    }
    OverviewText {
        width: parent.width
    }
    DetailFacts {
        width: parent.width
    }
    DetailSection {
        width: parent.width
        title: qsTr("Notes")

        NotesEditor {
            width: parent.width
        }
    }
    EntryList {
        width: parent.width
        title: qsTr("Additional Applications")
        entries: App.detail.extras.applications
        onOpened: index => App.detail.extras.openApplication(index)
    }
    EntryList {
        width: parent.width
        title: qsTr("Extras")
        entries: App.detail.extras.files
        onOpened: index => App.detail.extras.openFile(index)
    }
}
