import QtQuick
import Ludarium

// Over the games of a collection that cannot be looked at: what is missing, and the way to look again.
Rectangle {
    id: notice

    readonly property bool shown: App.library.unavailable !== ""

    visible: shown
    height: shown ? Math.max(message.implicitHeight, retry.height) + 2 * Theme.space12 : 0
    color: Theme.raised
    Accessible.role: Accessible.AlertMessage
    Accessible.name: App.library.unavailable

    AppIcon {
        id: sign

        x: Theme.space16
        anchors.verticalCenter: parent.verticalCenter
        name: "warning"
        color: Theme.warning
    }
    AppText {
        id: message

        anchors.left: sign.right
        anchors.leftMargin: Theme.space12
        anchors.right: retry.left
        anchors.rightMargin: Theme.space12
        anchors.verticalCenter: parent.verticalCenter
        text: App.library.gameCount === 0 ? App.library.unavailable : qsTr("%1 The games are shown as they were last seen.").arg(App.library.unavailable)
        wrapMode: Text.Wrap
        maximumLineCount: 4
        Accessible.ignored: true
    }
    AppButton {
        id: retry

        anchors.right: parent.right
        anchors.rightMargin: Theme.space16
        anchors.verticalCenter: parent.verticalCenter
        iconName: "refresh"
        text: App.library.loading ? qsTr("Looking...") : qsTr("Retry")
        enabled: !App.library.loading
        onClicked: App.refreshLibrary()
    }
}
