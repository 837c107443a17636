import QtQuick
import QtQuick.Layouts
import Ludarium

// What is shown, how, and the search. Where there is little room, controls and search get rows of their own.
Rectangle {
    id: toolbar

    property alias search: searchField
    property bool sidebarShown: true
    property bool detailShown: true
    readonly property bool narrow: width < 880 * Theme.textScale
    readonly property bool tiny: width < 400 * Theme.textScale
    signal sidebarToggled
    signal detailToggled
    signal searchLeft

    implicitHeight: rows.implicitHeight + 2 * Theme.space12
    color: Theme.window

    Column {
        id: rows

        x: Theme.space12
        y: Theme.space12
        width: parent.width - 2 * Theme.space12
        spacing: Theme.space8

        RowLayout {
            width: parent.width
            spacing: Theme.space8

            IconButton {
                iconName: "sidebar"
                text: toolbar.sidebarShown ? qsTr("Hide Sidebar") : qsTr("Show Sidebar")
                onClicked: toolbar.sidebarToggled()
            }
            IconButton {
                visible: App.browse.filtered
                iconName: "back"
                text: qsTr("Back to All Games")
                onClicked: {
                    App.browse.searchText = "";
                    App.browse.clearFilters();
                }
            }
            AppText {
                Layout.fillWidth: true
                Layout.minimumWidth: Math.min(implicitWidth, toolbar.tiny ? 40 : 90)
                Layout.maximumWidth: implicitWidth + 1
                Layout.leftMargin: Theme.space4
                text: App.browse.title
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            AppText {
                readonly property bool wanted: App.library.gameCount > 0 && toolbar.width > 420 * Theme.textScale

                topPadding: 2
                text: !wanted ? "" : App.browse.games.count === 1 ? qsTr("1 game") : qsTr("%L1 games").arg(App.browse.games.count)
                color: Theme.textSecondary
            }
            Item {
                Layout.fillWidth: true
                Layout.preferredWidth: 0
            }
            Item {
                id: controlsSlot

                visible: !toolbar.narrow
                implicitWidth: controls.oneRow
                implicitHeight: controls.implicitHeight
            }
            Item {
                id: searchSlot

                visible: !toolbar.tiny
                Layout.fillWidth: true
                Layout.preferredWidth: 240
                Layout.maximumWidth: Math.round(240 * Theme.textScale)
                Layout.minimumWidth: 110
                implicitHeight: searchField.implicitHeight
            }
            IconButton {
                iconName: "panel"
                text: toolbar.detailShown ? qsTr("Hide Details") : qsTr("Show Details")
                onClicked: toolbar.detailToggled()
            }
        }
        Item {
            id: searchRow

            visible: toolbar.tiny
            width: parent.width
            height: searchField.implicitHeight
        }
        Item {
            id: controlsRow

            visible: toolbar.narrow
            width: parent.width
            height: controls.implicitHeight
        }
    }
    ViewControls {
        id: controls

        parent: toolbar.narrow ? controlsRow : controlsSlot
        width: parent.width
        terse: toolbar.tiny
    }
    SearchField {
        id: searchField

        parent: toolbar.tiny ? searchRow : searchSlot
        width: parent.width
        text: App.browse.searchText
        onTextChanged: App.browse.searchText = text
        onAbandoned: toolbar.searchLeft()
        onAccepted: toolbar.searchLeft()
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
        opacity: 0.6
    }
}
