import QtQuick
import QtQuick.Layouts
import Ludarium

Rectangle {
    id: toolbar

    property alias search: searchField
    property bool sidebarShown: true
    property bool detailShown: true
    signal sidebarToggled
    signal detailToggled
    signal searchLeft

    implicitHeight: Theme.controlHeight + 2 * Theme.space12
    color: Theme.window

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.space12
        anchors.rightMargin: Theme.space12
        spacing: Theme.space8

        IconButton {
            iconName: "sidebar"
            text: toolbar.sidebarShown ? qsTr("Hide Sidebar") : qsTr("Show Sidebar")
            onClicked: toolbar.sidebarToggled()
        }
        AppText {
            Layout.fillWidth: true
            Layout.minimumWidth: Math.min(implicitWidth, 90)
            Layout.maximumWidth: implicitWidth + 1
            Layout.leftMargin: Theme.space4
            text: App.browse.title
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        AppText {
            visible: App.library.gameCount > 0 && toolbar.width > 480 * Theme.textScale
            topPadding: 2
            text: App.browse.games.count === 1 ? qsTr("1 game") : qsTr("%L1 games").arg(App.browse.games.count)
            color: Theme.textSecondary
        }
        Item {
            Layout.fillWidth: true
            Layout.preferredWidth: 0
        }
        Row {
            spacing: 2

            IconButton {
                iconName: "grid"
                text: qsTr("Grid")
                checked: App.browse.viewMode === "Grid"
                onClicked: App.browse.viewMode = "Grid"
            }
            IconButton {
                iconName: "list"
                text: qsTr("List")
                checked: App.browse.viewMode === "List"
                onClicked: App.browse.viewMode = "List"
            }
        }
        SearchField {
            id: searchField

            Layout.fillWidth: true
            Layout.preferredWidth: 240
            Layout.maximumWidth: Math.round(240 * Theme.textScale)
            Layout.minimumWidth: 120
            text: App.browse.searchText
            onTextChanged: App.browse.searchText = text
            onAbandoned: toolbar.searchLeft()
        }
        IconButton {
            iconName: "panel"
            text: toolbar.detailShown ? qsTr("Hide Details") : qsTr("Show Details")
            onClicked: toolbar.detailToggled()
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
        opacity: 0.6
    }
}
