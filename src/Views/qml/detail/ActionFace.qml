import QtQuick
import Ludarium

// An icon over its name.
Item {
    id: face

    required property string text
    required property string iconName
    required property color ink

    implicitHeight: icon.height + Theme.space4 + label.implicitHeight

    AppIcon {
        id: icon

        anchors.horizontalCenter: parent.horizontalCenter
        name: face.iconName
        color: face.ink
    }
    AppText {
        id: label

        anchors.bottom: parent.bottom
        width: parent.width
        text: face.text
        color: face.ink
        font.pixelSize: Theme.textCaption
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
