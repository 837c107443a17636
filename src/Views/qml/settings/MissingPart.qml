import QtQuick
import Ludarium

// What stands in a tab that has nothing to set.
Rectangle {
    id: part

    required property string text

    implicitHeight: label.implicitHeight + 2 * Theme.space16
    radius: Theme.radius
    color: Theme.raised
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    AppIcon {
        id: symbol

        x: Theme.space16
        y: Theme.space16
        name: "info"
    }
    AppText {
        id: label

        anchors.left: symbol.right
        anchors.leftMargin: Theme.space12
        anchors.right: parent.right
        anchors.rightMargin: Theme.space16
        y: Theme.space16
        text: part.text
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Accessible.ignored: true
    }
}
