import QtQuick
import Ludarium

// The one button for what the game needs next, with what is happening and what went wrong, and the lesser ones.
Column {
    id: box

    readonly property bool starting: App.launch.launching
    readonly property string wanted: App.detail.actions.primary
    readonly property bool running: App.running.selected
    // That it runs is seen from the button.
    readonly property string reason: starting || running ? "" : App.detail.actions.primaryReason

    spacing: Theme.space8

    Row {
        width: parent.width
        spacing: Theme.space8

        AppButton {
            id: button

            width: parent.width - (stop.visible ? stop.width + parent.spacing : 0)
            height: Theme.controlHeight + Theme.space8
            primary: true
            iconName: box.wanted === "install" ? "package" : box.wanted === "download" ? "obtain" : "play"
            text: {
                if (box.starting)
                    return qsTr("Starting...");
                if (box.running)
                    return qsTr("Playing · %1").arg(App.running.elapsed);
                if (box.wanted === "install")
                    return qsTr("Install");
                if (box.wanted === "download")
                    return App.detail.actions.downloadSize === "" ? qsTr("Download") : qsTr("Download (%1)").arg(App.detail.actions.downloadSize);
                return qsTr("Play");
            }
            enabled: !box.starting && App.detail.actions.primaryReason === ""
            font.pixelSize: Theme.textTitle
            Accessible.name: qsTr("%1: %2").arg(text).arg(App.detail.title)
            Accessible.description: App.detail.actions.primaryReason
            onClicked: App.launch.act()
        }
        AppButton {
            id: stop

            height: button.height
            visible: box.running
            enabled: !App.running.stopping
            iconName: "stop"
            text: App.running.stopping ? qsTr("Stopping...") : qsTr("Stop")
            Accessible.name: qsTr("%1: %2").arg(text).arg(App.detail.title)
            onClicked: App.running.stopSelected()
        }
    }
    // In sight, as a pointer does not rest on what does nothing.
    Row {
        width: parent.width
        visible: box.reason !== ""
        spacing: Theme.space8

        AppIcon {
            id: hint

            y: (why.font.pixelSize * 1.3 - height) / 2
            name: "info.circle"
            color: Theme.textSecondary
            size: Math.round(14 * Theme.textScale)
        }
        AppText {
            id: why

            width: parent.width - hint.width - parent.spacing
            text: box.reason
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            wrapMode: Text.Wrap
            maximumLineCount: 4
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    DetailActions {
        width: parent.width
    }
    AppText {
        width: parent.width
        visible: box.starting && text !== ""
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
            id: sign

            anchors.left: parent.left
            anchors.leftMargin: Theme.space8
            y: Theme.space8
            name: "warning"
            color: Theme.danger
        }
        AppText {
            id: message

            anchors.left: sign.right
            anchors.leftMargin: Theme.space8
            anchors.right: parent.right
            anchors.rightMargin: Theme.space8
            y: Theme.space8
            text: App.launch.error
            color: Theme.danger
            wrapMode: Text.Wrap
            maximumLineCount: 8
            Accessible.ignored: true
        }
    }
}
