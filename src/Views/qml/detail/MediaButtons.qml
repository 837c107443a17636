import QtQuick
import Ludarium

// The game's video, manual and music, which the system's own programs show.
Flow {
    id: media

    spacing: Theme.space8
    visible: App.detail.media.video !== "" || App.detail.media.manual !== "" || App.detail.media.music.length > 0

    AppButton {
        visible: App.detail.media.video !== ""
        iconName: "movie"
        text: qsTr("Video")
        onClicked: App.detail.extras.openMedia(App.detail.media.video)
    }
    AppButton {
        visible: App.detail.media.manual !== ""
        iconName: "book.fill"
        text: qsTr("Manual")
        onClicked: App.detail.extras.openMedia(App.detail.media.manual)
    }
    AppButton {
        visible: App.detail.media.music.length > 0
        iconName: "note"
        text: qsTr("Music")
        onClicked: App.detail.extras.openMedia(App.detail.media.music[0])
    }
}
