import QtQuick
import Ludarium

FocusScope {
    id: content

    readonly property bool away: App.library.unavailable !== ""
    signal cancelled

    function focusFirst() {
        select.takeFocus();
    }

    focus: true
    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Select Collection Folder")
    Keys.onEscapePressed: cancelled()

    Column {
        id: column

        width: parent.width
        spacing: Theme.space16

        AppText {
            width: parent.width
            text: qsTr("Select Collection Folder")
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        AppText {
            width: parent.width
            visible: content.away
            text: qsTr("%1\nConnect its drive and try again, or choose another folder.").arg(App.library.unavailable)
            color: Theme.warning
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            lineHeight: 1.2
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        AppText {
            width: parent.width
            text: qsTr("Choose the folder that holds your games. It contains the folders Data, eXo and Images.")
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            lineHeight: 1.2
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        DropTarget {
            width: parent.width
            height: Math.round(120 * Math.min(Theme.textScale, 1.4))
        }
        Flow {
            width: parent.width
            layoutDirection: Qt.RightToLeft
            spacing: Theme.space8

            AppButton {
                id: select

                iconName: "folder"
                text: qsTr("Select Folder...")
                primary: true
                focus: true
                onClicked: App.chooseCollection()
            }
            AppButton {
                visible: content.away
                enabled: !App.library.loading
                text: qsTr("Try Again")
                onClicked: App.reopenCollection()
            }
            AppButton {
                text: qsTr("Cancel")
                onClicked: content.cancelled()
            }
        }
    }
}
