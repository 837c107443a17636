import QtQuick
import Ludarium

FocusScope {
    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text
    Accessible.description: explanation.text
    Keys.onEscapePressed: App.thumbnails.cancel()

    function focusCancel() {
        cancelButton.takeFocus();
    }

    Column {
        id: column

        width: parent.width
        spacing: Theme.space12

        AppText {
            id: heading

            width: parent.width
            text: qsTr("Caching Thumbnails")
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
        }
        AppText {
            id: explanation

            width: parent.width
            text: qsTr("Generating cached thumbnails for faster browsing.\nThis only needs to happen once.")
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            lineHeight: 1.25
        }
        ProgressLine {
            width: parent.width
            value: App.thumbnails.progress
        }
        AppText {
            width: parent.width
            text: App.thumbnails.status
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
        }
        AppButton {
            id: cancelButton

            anchors.right: parent.right
            text: qsTr("Cancel")
            onClicked: App.thumbnails.cancel()
        }
    }
}
