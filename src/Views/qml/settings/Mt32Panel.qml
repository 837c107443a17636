import QtQuick
import Ludarium

// Whether the ROMs of a Roland MT-32 are there, and where they go.
Column {
    id: panel

    spacing: Theme.space12

    Row {
        width: parent.width
        spacing: Theme.space12

        AppIcon {
            id: symbol

            name: App.dependencies.mt32Installed ? "check" : "info"
            color: App.dependencies.mt32Installed ? Theme.success : Theme.textSecondary
        }
        AppText {
            width: parent.width - symbol.width - Theme.space12
            text: !App.dependencies.checked ? qsTr("Looking...") : App.dependencies.mt32Installed ? qsTr("The MT-32 ROM files are installed.") : qsTr("MT-32 ROM files not found.")
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    AppText {
        width: parent.width
        text: qsTr("Many DOS games were written for the Roland MT-32 and sound best through it. DOSBox Staging plays it from two ROM files, a control and a PCM ROM, for example MT32_CONTROL.ROM and MT32_PCM.ROM. Put yours into this folder:")
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        lineHeight: 1.15
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    CommandLine {
        width: parent.width
        command: App.dependencies.mt32Folder
    }
    Flow {
        width: parent.width
        spacing: Theme.space8

        AppButton {
            iconName: "folder"
            text: qsTr("Open Folder")
            onClicked: App.dependencies.openMt32Folder()
        }
        AppButton {
            iconName: "refresh"
            text: qsTr("Check Again")
            enabled: !App.dependencies.checking
            onClicked: App.dependencies.check()
        }
    }
}
