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

    Shortcut {
        sequences: ["F10"]
        enabled: bar.commands.free
        onActivated: (bar.itemAt(0) as MenuBarItem).triggered()
    }
    AppMenu {
        title: qsTr("Ludarium")

        AppMenuItem {
            action: bar.commands.about
        }
        AppMenuItem {
            action: bar.commands.checkForUpdates
        }
        AppMenuSeparator {}
        AppMenuItem {
            action: bar.commands.settings
        }
        AppMenuItem {
            action: bar.commands.quit
        }
    }
    AppMenu {
        title: qsTr("Library")

        AppMenuItem {
            action: bar.commands.refresh
        }
        AppMenuItem {
            action: bar.commands.open
        }
        AppMenuItem {
            action: bar.commands.addCollection
        }
        AppMenuItem {
            action: bar.commands.runSetup
        }
        AppMenuItem {
            action: bar.commands.importRoms
        }
    }
    AppMenu {
        title: qsTr("View")

        AppMenuItem {
            action: bar.commands.showAll
        }
        AppMenuItem {
            action: bar.commands.showFavorites
        }
        AppMenuItem {
            action: bar.commands.showRecent
        }
        AppMenuItem {
            action: bar.commands.showInstalled
            choice: true
            chosen: App.browse.facets.installedOnly
        }
        AppMenuItem {
            action: bar.commands.statistics
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
            ViewModeItem {
                text: "Coverflow"
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
        AppMenuItem {
            action: bar.commands.startScreensaver
        }
        AppMenuSeparator {}
        SortMenu {}
        AppMenuItem {
            action: bar.commands.details
        }
        AppMenuItem {
            action: bar.commands.groupDuplicates
            choice: true
            chosen: App.browse.grouped
        }
        AppMenuItem {
            action: bar.commands.find
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
            action: bar.commands.setUp
        }
        AppMenuItem {
            action: bar.commands.toggleFavorite
        }
        AppMenuItem {
            action: bar.commands.openFolder
        }
        AppMenuItem {
            action: bar.commands.refreshImages
        }
        AppMenuItem {
            action: bar.commands.batch
        }
        AppMenuItem {
            action: bar.commands.quiz
        }
    }
    AppMenu {
        title: qsTr("Music")

        AppMenuItem {
            action: bar.commands.musicPlay
        }
        AppMenuItem {
            action: bar.commands.musicNext
        }
        AppMenuItem {
            action: bar.commands.musicPrevious
        }
        AppMenuItem {
            action: bar.commands.musicEnabled
        }
    }
    AppMenu {
        title: qsTr("Help")

        AppMenuItem {
            action: bar.commands.revealLogs
        }
        AppMenuItem {
            action: bar.commands.copyLogs
        }
        AppMenuItem {
            action: bar.commands.uploadLogs
        }
        AppMenuItem {
            action: bar.commands.clearLogs
        }
        AppMenuItem {
            action: bar.commands.help
        }
        AppMenuItem {
            action: bar.commands.reportBug
        }
        AppMenuItem {
            action: bar.commands.contactSupport
        }
        AppMenuSeparator {}
        AppMenuItem {
            action: bar.commands.logs
        }
    }
}
