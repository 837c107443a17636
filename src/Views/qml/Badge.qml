import QtQuick
import Ludarium

// A small mark on a cover: an icon, and a text where there is one.
Rectangle {
    id: badge

    property string iconName
    property string text
    property color ink: Theme.coverText
    readonly property int size: Math.round(22 * Math.min(Theme.textScale, 1.4))

    width: Math.max(size, row.implicitWidth + (text === "" ? 0 : 2 * Theme.space8))
    height: size
    radius: size / 2
    color: Theme.badge

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.space4

        AppIcon {
            anchors.verticalCenter: parent.verticalCenter
            name: badge.iconName
            color: badge.ink
            size: Math.round(badge.size * 0.62)
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            visible: badge.text !== ""
            text: badge.text
            color: badge.ink
            font.pixelSize: Math.round(badge.size * 0.52)
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
    }
}
