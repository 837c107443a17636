import QtQuick
import QtQuick.Window
import Ludarium

Image {
    id: icon

    required property string name
    property color color: Theme.textSecondary
    property int size: Math.round(18 * Theme.textScale)

    width: size
    height: size
    source: "image://icon/" + name + "/" + color.toString().slice(-6)
    sourceSize.width: size * Screen.devicePixelRatio
    sourceSize.height: size * Screen.devicePixelRatio
    Accessible.ignored: true
}
