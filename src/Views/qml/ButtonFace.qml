import QtQuick
import Ludarium

// Icon and text of a button, in its middle.
Item {
    id: face

    required property string text
    required property string iconName
    required property font font
    required property color color

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.space8

        AppIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: face.iconName !== ""
            name: face.iconName === "" ? "play" : face.iconName
            color: face.color
            size: Math.round(16 * Theme.textScale)
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: face.text
            font: face.font
            color: face.color
            Accessible.ignored: true
        }
    }
}
