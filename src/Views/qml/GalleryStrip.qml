import QtQuick
import Ludarium

// The pictures of the selected game side by side, each under the name of its kind.
ListView {
    implicitHeight: 84 + Theme.space4 + Math.round(1.5 * Theme.textCaption)
    // One picture alone is the cover, which stands above.
    visible: count > 1
    orientation: ListView.Horizontal
    spacing: Theme.space8
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    model: App.detail.media
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Pictures")

    delegate: Column {
        id: tile

        required property string name
        required property string source

        spacing: Theme.space4
        Accessible.role: Accessible.Graphic
        Accessible.name: name

        Rectangle {
            width: 112
            height: 84
            radius: Theme.radiusSmall
            color: Theme.raised

            Image {
                anchors.fill: parent
                asynchronous: true
                source: tile.source
                sourceSize.width: width * Screen.devicePixelRatio
                sourceSize.height: height * Screen.devicePixelRatio
                fillMode: Image.PreserveAspectFit
                Accessible.ignored: true
            }
        }
        AppText {
            width: 112
            text: tile.name
            color: Theme.textSecondary
            font.pixelSize: Theme.textCaption
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
