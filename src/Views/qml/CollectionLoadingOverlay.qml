import QtQuick
import Ludarium

Item {
    id: overlay

    Column {
        anchors.centerIn: parent
        width: Math.min(420, parent.width - 2 * Theme.space24)
        spacing: Theme.space16

        AppText {
            width: parent.width
            text: qsTr("Loading your collection")
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        ProgressLine {
            width: parent.width
            value: App.library.progress
        }
        AppText {
            width: parent.width
            text: App.library.step
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 3
        }
    }
}
