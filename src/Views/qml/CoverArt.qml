import QtQuick
import Ludarium

// The picture of a game with its own proportions, standing on the lower edge; until it is there, and where there is
// none, a cover drawn from the title.
Item {
    id: art

    required property string source
    required property string initials
    required property real hue
    // Width of the item in pixels of the screen; nothing is asked for while it is 0.
    required property int requestWidth

    readonly property bool hasPicture: picture.status === Image.Ready && picture.implicitWidth > 1
    // The part of the item that the cover takes.
    readonly property real coverWidth: hasPicture ? picture.paintedWidth : width
    readonly property real coverHeight: hasPicture ? picture.paintedHeight : height
    readonly property real coverX: (width - coverWidth) / 2
    readonly property real coverY: height - coverHeight

    onHasPictureChanged: {
        if (hasPicture) {
            fade.restart();
        } else {
            fade.stop();
            picture.opacity = 0;
        }
    }

    Image {
        id: ground

        width: art.width
        height: art.height
        visible: picture.opacity < 1
        source: art.requestWidth > 0 ? "image://placeholder/" + Math.round(art.hue * 36) : ""
        sourceSize.width: art.requestWidth
        sourceSize.height: Math.round(art.requestWidth * 4 / 3)
        Accessible.ignored: true
    }
    AppText {
        x: art.width * 0.03
        width: art.width
        height: art.height * 0.88
        visible: ground.visible
        text: art.initials
        color: Theme.coverText
        font.pixelSize: Math.max(14, art.width * 0.26)
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideNone
        opacity: 0.94
        Accessible.ignored: true
    }
    Image {
        id: picture

        width: art.width
        height: art.height
        asynchronous: true
        // What is asked for is exactly what is shown, so that nothing is scaled twice.
        source: art.requestWidth > 0 ? art.source : ""
        sourceSize.width: art.requestWidth
        sourceSize.height: Math.round(art.requestWidth * 4 / 3)
        fillMode: Image.PreserveAspectFit
        verticalAlignment: Image.AlignBottom
        opacity: 0
        Accessible.ignored: true
    }
    NumberAnimation {
        id: fade

        target: picture
        property: "opacity"
        to: 1
        duration: Theme.slow
    }
}
