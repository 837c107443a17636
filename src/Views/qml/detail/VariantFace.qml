import QtQuick
import Ludarium

// Name of a variant, behind a mark when it is installed.
Item {
    id: face

    required property string text
    required property bool installed
    required property bool checked

    implicitWidth: label.x + label.implicitWidth
    implicitHeight: label.implicitHeight

    AppIcon {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        visible: face.installed
        name: "check"
        color: face.checked ? Theme.accentText : Theme.success
        size: Math.round(14 * Theme.textScale)
    }
    AppText {
        id: label

        x: face.installed ? mark.width + Theme.space8 : 0
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, face.width - x)
        text: face.text
        color: face.checked ? Theme.accentText : Theme.text
        Accessible.ignored: true
    }
}
