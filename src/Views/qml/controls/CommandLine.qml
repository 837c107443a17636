import QtQuick
import Ludarium

// A line to type into a terminal, with a button that copies it.
Rectangle {
    id: line

    required property string command

    implicitHeight: Math.max(text.implicitHeight, copyButton.implicitHeight) + 2 * Theme.space4
    radius: Theme.radius
    color: Theme.window
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.StaticText
    Accessible.name: command

    AppText {
        id: text

        anchors.left: parent.left
        anchors.leftMargin: Theme.space12
        anchors.right: copyButton.left
        anchors.rightMargin: Theme.space8
        anchors.verticalCenter: parent.verticalCenter
        topPadding: Theme.space4
        bottomPadding: Theme.space4
        text: line.command
        font.family: App.appearance.fixedFamily
        font.pixelSize: Theme.textSmall
        wrapMode: Text.WrapAnywhere
        elide: Text.ElideNone
        Accessible.ignored: true
    }
    IconButton {
        id: copyButton

        anchors.right: parent.right
        anchors.rightMargin: Theme.space4
        anchors.verticalCenter: parent.verticalCenter
        iconName: "copy"
        text: qsTr("Copy Command")
        onClicked: App.copyText(line.command)
    }
}
