import QtQuick
import Ludarium

SidebarMenu {
    id: sidebarMenu

    AppMenuItem {
        text: qsTr("Show Games")
        onTriggered: App.sidebar.select(sidebarMenu.row)
    }
    AppMenuItem {
        text: sidebarMenu.expanded && sidebarMenu.expandable ? qsTr("Collapse") : qsTr("Expand")
        enabled: sidebarMenu.expandable && App.sidebar.filter === ""
        why: sidebarMenu.expandable ? qsTr("Not while the sidebar is filtered.") : qsTr("No playlist is nested in it.")
        onTriggered: App.sidebar.setExpanded(sidebarMenu.row, !sidebarMenu.expanded)
    }
}
