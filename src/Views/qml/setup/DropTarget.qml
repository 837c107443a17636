import QtQuick
import Ludarium

// Where a folder may be dropped to open it.
Rectangle {
    id: target

    property string text: qsTr("or drop a folder here")

    radius: Theme.radius
    color: drop.containsDrag ? Theme.selection : Theme.window
    border.width: drop.containsDrag ? 2 : 1
    border.color: drop.containsDrag ? Theme.accent : Theme.border

    Column {
        anchors.centerIn: parent
        spacing: Theme.space8

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "folder"
            size: 32
            color: drop.containsDrag ? Theme.accent : Theme.textSecondary
        }
        AppText {
            text: target.text
            color: drop.containsDrag ? Theme.text : Theme.textSecondary
        }
    }
    FolderDrop {
        id: drop

        anchors.fill: parent
    }
}
