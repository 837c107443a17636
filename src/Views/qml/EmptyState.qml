import QtQuick
import Ludarium

// What stands in place of games: what the matter is and what to do.
Item {
    id: state

    required property string iconName
    required property string title
    required property string text
    property string actionText
    signal acted

    Column {
        anchors.centerIn: parent
        width: Math.min(420, parent.width - 2 * Theme.space24)
        spacing: Theme.space12

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: state.iconName
            size: 48
        }
        AppText {
            width: parent.width
            text: state.title
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        AppText {
            width: parent.width
            text: state.text
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.25
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Item {
            width: 1
            height: Theme.space4
            visible: state.actionText !== ""
        }
        AppButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: state.actionText !== ""
            text: state.actionText
            primary: true
            onClicked: state.acted()
        }
    }
}
