import QtQuick
import QtQuick.Layouts
import Ludarium

Rectangle {
    id: bar

    implicitHeight: Math.round(28 * Theme.textScale)
    color: Theme.sidebar
    Accessible.role: Accessible.StatusBar
    Accessible.name: App.library.loading ? App.library.step : App.browse.joined([counts.text, App.running.text], ", ")

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.border
        opacity: 0.6
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.space16
        anchors.rightMargin: Theme.space16
        spacing: Theme.space16

        AppText {
            id: counts

            text: App.library.gameCount === 0 ? qsTr("No games") : (App.library.gameCount === 1 ? qsTr("1 game") : qsTr("%L1 games").arg(App.library.gameCount)) + (App.sidebar.platformCount === 1 ? qsTr(" on 1 platform") : qsTr(" on %L1 platforms").arg(App.sidebar.platformCount))
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
        }
        AppText {
            Layout.fillWidth: true
            horizontalAlignment: App.library.loading ? Text.AlignRight : Text.AlignLeft
            text: App.library.loading ? App.library.step : App.library.folder
            elide: App.library.loading ? Text.ElideRight : Text.ElideMiddle
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
        }
        ProgressLine {
            Layout.preferredWidth: 160
            visible: App.library.loading
            value: App.library.progress
        }
        AppText {
            visible: text !== ""
            Layout.maximumWidth: bar.width / 2
            text: App.running.text
            color: Theme.success
            font.pixelSize: Theme.textSmall
        }
        AppText {
            visible: App.launch.launching
            text: App.launch.step === "" ? qsTr("Starting...") : App.launch.step
            color: Theme.accent
            font.pixelSize: Theme.textSmall
        }
    }
}
