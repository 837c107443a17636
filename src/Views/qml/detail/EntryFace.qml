import QtQuick
import Ludarium

// Icon and name of an entry, and its size beside them, or below where there is no room.
Item {
    id: face

    required property string name
    required property string iconName
    required property string detail
    readonly property bool stacked: detail !== "" && width < 200 * Theme.textScale

    implicitHeight: label.height + (stacked ? size.height : 0)

    AppIcon {
        id: icon

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        name: face.iconName
        size: Math.round(16 * Theme.textScale)
    }
    AppText {
        id: label

        anchors.left: icon.right
        anchors.leftMargin: Theme.space8
        width: face.width - icon.width - Theme.space8 - (face.stacked || face.detail === "" ? 0 : size.implicitWidth + Theme.space8)
        y: (face.height - height - (face.stacked ? size.height : 0)) / 2
        text: face.name
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        maximumLineCount: 2
        Accessible.ignored: true
    }
    AppText {
        id: size

        anchors.right: parent.right
        y: face.stacked ? label.y + label.height : (face.height - height) / 2
        text: face.detail
        color: face.enabled ? Theme.textSecondary : Theme.text
        font.pixelSize: Theme.textSmall
        Accessible.ignored: true
    }
}
