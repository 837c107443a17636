import QtQuick
import Ludarium

SidebarMenu {
    id: sidebarMenu

    AppMenuItem {
        text: sidebarMenu.expanded ? qsTr("Collapse") : qsTr("Expand")
        enabled: App.sidebar.filter === ""
        why: qsTr("Not while the sidebar is filtered.")
        onTriggered: App.sidebar.setExpanded(sidebarMenu.row, !sidebarMenu.expanded)
    }
    AppMenuItem {
        text: qsTr("Expand All")
        onTriggered: App.sidebar.setAllExpanded(true)
    }
    AppMenuItem {
        text: qsTr("Collapse All")
        onTriggered: App.sidebar.setAllExpanded(false)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: qsTr("New Group...")
        onTriggered: sidebarMenu.nameWanted("", "", "")
    }
    AppMenuItem {
        text: qsTr("Sort Platforms by Name")
        choice: true
        chosen: !App.sidebar.sortByCount
        onTriggered: App.sidebar.sortByCount = false
    }
    AppMenuItem {
        text: qsTr("Sort Platforms by Game Count")
        choice: true
        chosen: App.sidebar.sortByCount
        onTriggered: App.sidebar.sortByCount = true
    }
}
