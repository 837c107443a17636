import QtQuick
import Ludarium

// The button that plays, with what is happening and what went wrong.
Column {
    id: box

    spacing: Theme.space8

    AppButton {
        width: parent.width
        height: Theme.controlHeight + Theme.space8
        primary: true
        iconName: "play"
        text: App.launch.launching ? qsTr("Starting...") : qsTr("Play")
        enabled: !App.launch.launching
        font.pixelSize: Theme.textTitle
        Accessible.name: qsTr("Play %1").arg(App.detail.title)
        onClicked: App.launch.playSelected()
    }
    AppText {
        width: parent.width
        visible: App.launch.launching && text !== ""
        text: App.launch.step
        color: Theme.textSecondary
        font.pixelSize: Theme.textSmall
        wrapMode: Text.Wrap
    }
    Rectangle {
        width: parent.width
        height: message.implicitHeight + 2 * Theme.space8
        visible: App.launch.error !== ""
        radius: Theme.radius
        color: Theme.raised
        Accessible.role: Accessible.AlertMessage
        Accessible.name: App.launch.error

        AppIcon {
            x: Theme.space8
            y: Theme.space8
            name: "warning"
            color: Theme.danger
        }
        AppText {
            id: message

            x: 2 * Theme.space16 + Theme.space4
            y: Theme.space8
            width: parent.width - x - Theme.space8
            text: App.launch.error
            color: Theme.danger
            wrapMode: Text.Wrap
            maximumLineCount: 8
            Accessible.ignored: true
        }
    }
}
