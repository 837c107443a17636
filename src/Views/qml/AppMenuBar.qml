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
        AppMenuItem {
            action: bar.commands.toggleSidebar
        }
        AppMenuItem {
            action: bar.commands.filterSidebar
        }
        AppMenuSeparator {}
        AppMenu {
            title: qsTr("View Mode")

            ViewModeItem {
                text: "List"
            }
            ViewModeItem {
                text: "Grid"
            }
        }
        AppMenu {
            title: qsTr("Grid Size")

            GridSizeItem {
                text: "Small"
            }
            GridSizeItem {
                text: "Medium"
            }
            GridSizeItem {
                text: "Large"
            }
            GridSizeItem {
                text: "Extra Large"
            }
        }
        AppMenu {
            title: qsTr("Theme")

            ThemeItem {
                text: "System"
            }
            ThemeItem {
                text: "Retro Purple"
            }
            ThemeItem {
                text: "Ocean Blue"
            }
            ThemeItem {
                text: "Forest Green"
            }
            ThemeItem {
                text: "Midnight Glass"
            }
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
