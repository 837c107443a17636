import QtQuick
import Ludarium

Rectangle {
    id: badge

    required property string text

    implicitWidth: label.implicitWidth + 2 * Theme.space8
    implicitHeight: label.implicitHeight + 2 * 2
    radius: Theme.radiusSmall
    color: Theme.transparent
    border.width: 1
    border.color: ink
    property color ink: Theme.textSecondary

    AppText {
        id: label

        anchors.centerIn: parent
        text: badge.text
        color: badge.ink
        font.pixelSize: Theme.textCaption
        Accessible.ignored: true
    }
}
