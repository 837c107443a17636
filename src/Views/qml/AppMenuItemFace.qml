import QtQuick
import Ludarium

// The text of a menu's entry, and its keys at the right.
Item {
    id: face

    required property string text
    required property string keys
    required property bool indent
    required property bool arrow

    AppText {
        anchors.left: parent.left
        anchors.leftMargin: face.indent ? 2 * Theme.space12 : Theme.space4
        anchors.right: keyText.left
        anchors.rightMargin: Theme.space8
        anchors.verticalCenter: parent.verticalCenter
        text: face.text
        Accessible.ignored: true
    }
    AppText {
        id: keyText

        anchors.right: parent.right
        anchors.rightMargin: face.arrow ? Theme.space16 : Theme.space4
        anchors.verticalCenter: parent.verticalCenter
        text: face.keys
        color: face.enabled ? Theme.textSecondary : Theme.text
        font.pixelSize: Theme.textSmall
        Accessible.ignored: true
    }
}
