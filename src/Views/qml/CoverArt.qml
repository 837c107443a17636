import QtQuick
import QtQuick.Window
import Ludarium

// The picture of a game with its own proportions, standing on the lower edge; until it is there, and where there is
// none, a cover drawn from the title.
Item {
    id: art

    required property string source
    required property string title
    required property string initials
    required property real hue
    property alias verticalAlignment: picture.verticalAlignment

    readonly property bool hasPicture: picture.status === Image.Ready && picture.implicitWidth > 1
    // The part of the item that the cover takes.
    readonly property real coverWidth: hasPicture ? picture.paintedWidth : width
    readonly property real coverHeight: hasPicture ? picture.paintedHeight : height
    readonly property real coverX: (width - coverWidth) / 2
    readonly property real coverY: picture.verticalAlignment === Image.AlignTop ? 0 : height - coverHeight
    // What is asked for is exactly what is shown, so that nothing is scaled twice; but not every width that the
    // dragged edge of a window goes through.
    property int requestWidth: 0

    onWidthChanged: requestWidth === 0 ? settled.triggered() : settled.restart()

    Timer {
        id: settled

        interval: 150
        onTriggered: art.requestWidth = Math.round(art.width * Screen.devicePixelRatio)
    }

    Image {
        id: placeholder

        anchors.fill: parent
        source: art.requestWidth > 0 ? "image://placeholder/" + Math.round(art.hue * 36) : ""
        sourceSize.width: art.requestWidth
        sourceSize.height: Math.round(art.requestWidth * 4 / 3)
        opacity: art.hasPicture ? 0 : 1
        visible: opacity > 0
        Accessible.ignored: true

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.slow
            }
        }

        AppText {
            anchors.centerIn: parent
            anchors.horizontalCenterOffset: parent.width * 0.03
            anchors.verticalCenterOffset: -parent.height * 0.06
            text: art.initials
            color: Theme.coverText
            font.pixelSize: Math.max(14, parent.width * 0.26)
            font.weight: Font.DemiBold
            opacity: 0.94
            Accessible.ignored: true
        }
        AppText {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Theme.space12
            anchors.leftMargin: Theme.space12 + Math.round(parent.width * 0.06)
            visible: parent.width > 80
            text: art.title
            color: Theme.coverText
            font.pixelSize: Theme.textCaption
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 2
            opacity: 0.85
            Accessible.ignored: true
        }
    }

    Image {
        id: picture

        anchors.fill: parent
        asynchronous: true
        source: art.requestWidth > 0 ? art.source : ""
        sourceSize.width: art.requestWidth
        sourceSize.height: Math.round(art.requestWidth * 4 / 3)
        fillMode: Image.PreserveAspectFit
        verticalAlignment: Image.AlignBottom
        smooth: true
        opacity: art.hasPicture ? 1 : 0
        Accessible.ignored: true

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.slow
            }
        }
    }
}
