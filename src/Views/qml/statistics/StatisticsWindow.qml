import QtQuick
import QtQuick.Controls.Basic
import Ludarium

AppWindow {
    id: window

    readonly property bool wide: width > 720 * Theme.textScale

    width: 980
    height: 760
    minimumWidth: 560
    minimumHeight: 400
    title: qsTr("Statistics")
    onVisibleChanged: App.statistics.watching = visible

    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: window.close()
    }

    Flickable {
        id: scroll

        anchors.fill: parent
        contentHeight: column.implicitHeight + 2 * Theme.space24
        boundsBehavior: Flickable.StopAtBounds
        focus: true
        ScrollBar.vertical: AppScrollBar {}
        Keys.onEscapePressed: window.close()
        Keys.onUpPressed: scrollBy(-60)
        Keys.onDownPressed: scrollBy(60)

        function scrollBy(distance: real) {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + distance));
        }

        Column {
            id: column

            x: Theme.space24
            y: Theme.space24
            width: parent.width - 2 * Theme.space24
            spacing: Theme.space16
            opacity: App.statistics.ready ? 1 : 0

            StatCards {
                width: parent.width
                figures: App.statistics.cards
            }
            StatCards {
                width: parent.width
                figures: App.statistics.streaks
                subtitle: qsTr("days")
            }
            StatPanel {
                width: parent.width
                title: qsTr("Play History")
                note: qsTr("The last 30 days. Average session: %1").arg(App.statistics.averageSession)
                empty: App.statistics.longestDay <= 0

                HistoryChart {
                    width: parent.width
                    days: App.statistics.history
                    longest: App.statistics.longestDay
                }
            }
            RangePicker {
                width: parent.width
            }
            Grid {
                width: parent.width
                columns: window.wide ? 2 : 1
                columnSpacing: Theme.space16
                rowSpacing: Theme.space16

                readonly property real cell: (width - (columns - 1) * columnSpacing) / columns

                StatPanel {
                    width: parent.cell
                    title: qsTr("Play Time by Platform")
                    empty: App.statistics.platforms.length === 0

                    ShareChart {
                        width: parent.width
                        shares: App.statistics.platforms
                    }
                }
                StatPanel {
                    width: parent.cell
                    title: qsTr("Play Time by Genre")
                    empty: App.statistics.genres.length === 0

                    ShareChart {
                        width: parent.width
                        shares: App.statistics.genres
                    }
                }
            }
            StatPanel {
                width: parent.width
                title: qsTr("Most Played Games")
                empty: App.statistics.mostPlayed.length === 0
                emptyText: qsTr("No games played yet")

                MostPlayedList {
                    width: parent.width
                    games: App.statistics.mostPlayed
                }
            }
        }
    }
}
