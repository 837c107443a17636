import QtQuick
import QtQuick.Window
import Ludarium

// One picture of the gallery, small, over the name of its kind.
Column {
    id: tile

    required property int index
    required property string name
    required property string source
    readonly property bool current: ListView.isCurrentItem && ListView.view.activeFocus
    signal opened

    width: 112
    spacing: Theme.space4
    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.onPressAction: opened()

    Rectangle {
        width: tile.width
        height: 84
        radius: Theme.radiusSmall
        color: area.containsMouse ? Theme.hover : Theme.raised
        border.width: tile.current ? 2 : 0
        border.color: Theme.accent

        Image {
            anchors.fill: parent
            anchors.margins: 2
            asynchronous: true
            source: tile.source
            sourceSize.width: width * Screen.devicePixelRatio
            sourceSize.height: height * Screen.devicePixelRatio
            fillMode: Image.PreserveAspectFit
            Accessible.ignored: true
        }
        MouseArea {
            id: area

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: tile.opened()
        }
    }
    AppText {
        width: tile.width
        text: tile.name
        color: Theme.textSecondary
        font.pixelSize: Theme.textCaption
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
