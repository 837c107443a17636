import QtQuick
import Ludarium

// What is said of a version: its label and its badges, behind the mark of the choice.
Item {
    id: face

    required property string label
    required property string versionType
    required property string audioType
    required property bool marked

    implicitHeight: body.implicitHeight

    Rectangle {
        id: radio

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: Math.round(16 * Theme.textScale)
        height: width
        radius: width / 2
        color: Theme.transparent
        border.width: face.marked ? Math.round(width / 3) : 1
        border.color: face.marked ? Theme.accent : Theme.textSecondary
    }
    Flow {
        id: body

        anchors.left: radio.right
        anchors.leftMargin: Theme.space12
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.space8

        AppText {
            width: Math.min(implicitWidth, body.width)
            text: face.label
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        VersionBadge {
            text: face.versionType
        }
        AudioBadge {
            visible: face.audioType !== ""
            text: face.audioType
        }
    }
}
