import QtQuick
import QtQuick.Controls.Basic
import Ludarium

MenuBar {
    id: bar

    required property Commands commands

    background: Rectangle {
        color: Theme.sidebar
    }
    delegate: MenuBarItem {
        id: entry

        implicitHeight: Theme.rowHeight
        leftPadding: Theme.space12
        rightPadding: Theme.space12
        font.pixelSize: Theme.textBody
        Accessible.name: text

        contentItem: AppText {
            text: entry.text
            verticalAlignment: Text.AlignVCenter
            color: entry.highlighted ? Theme.text : Theme.textSecondary
        }
        background: Rectangle {
            radius: Theme.radiusSmall
            color: entry.highlighted ? Theme.hover : Theme.transparent
        }
    }

    AppMenu {
        title: qsTr("Library")

        AppMenuItem {
            action: bar.commands.open
        }
        AppMenuItem {
            action: bar.commands.refresh
        }
        AppMenuSeparator {}
        AppMenuItem {
            action: bar.commands.quit
        }
    }
    AppMenu {
        title: qsTr("View")

        AppMenuItem {
            action: bar.commands.showAll
        }
        AppMenuItem {
            action: bar.commands.find
        }
        AppMenuSeparator {}
        ChoiceMenu {
            title: qsTr("View Mode")
            choices: ["List", "Grid"]
            current: App.browse.viewMode
            onChosen: choice => App.browse.viewMode = choice
        }
        ChoiceMenu {
            title: qsTr("Grid Size")
            choices: ["Small", "Medium", "Large", "Extra Large"]
            current: App.browse.gridSize
            onChosen: choice => App.browse.gridSize = choice
        }
        ChoiceMenu {
            title: qsTr("Theme")
            choices: Theme.names
            current: App.appearance.theme
            onChosen: choice => App.appearance.theme = choice
        }
    }
    AppMenu {
        title: qsTr("Game")

        AppMenuItem {
            action: bar.commands.play
        }
        AppMenuItem {
            action: bar.commands.openFolder
        }
    }
    AppMenu {
        title: qsTr("Help")

        AppMenuItem {
            action: bar.commands.logs
        }
        AppMenuItem {
            action: bar.commands.revealLogs
        }
        AppMenuItem {
            action: bar.commands.copyLogs
        }
        AppMenuItem {
            action: bar.commands.clearLogs
        }
        AppMenuSeparator {}
        AppMenuItem {
            action: bar.commands.about
        }
    }
}
