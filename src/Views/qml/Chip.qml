import QtQuick
import Ludarium

Rectangle {
    id: chip

    required property string text

    implicitWidth: label.implicitWidth + 2 * Theme.space8
    implicitHeight: label.implicitHeight + 2 * Theme.space4
    radius: height / 2
    color: Theme.raised
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    AppText {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, chip.width - 2 * Theme.space8)
        text: chip.text
        color: Theme.textSecondary
        font.pixelSize: Theme.textSmall
        Accessible.ignored: true
    }
}
