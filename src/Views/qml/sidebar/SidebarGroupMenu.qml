import QtQuick
import Ludarium

SidebarMenu {
    id: sidebarMenu

    AppMenuItem {
        text: sidebarMenu.expanded ? qsTr("Collapse") : qsTr("Expand")
        enabled: sidebarMenu.expandable && App.sidebar.filter === ""
        why: sidebarMenu.expandable ? qsTr("Not while the sidebar is filtered.") : qsTr("No platform of this collection is in it.")
        onTriggered: App.sidebar.setExpanded(sidebarMenu.row, !sidebarMenu.expanded)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: qsTr("Move Up")
        enabled: sidebarMenu.opened && App.platforms.canMoveGroup(sidebarMenu.rowId, -1)
        why: qsTr("It is the first group.")
        onTriggered: App.platforms.moveGroup(sidebarMenu.rowId, -1)
    }
    AppMenuItem {
        text: qsTr("Move Down")
        enabled: sidebarMenu.opened && App.platforms.canMoveGroup(sidebarMenu.rowId, 1)
        why: qsTr("It is the last group.")
        onTriggered: App.platforms.moveGroup(sidebarMenu.rowId, 1)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: qsTr("New Group...")
        onTriggered: sidebarMenu.nameWanted("", "", "")
    }
    AppMenuItem {
        text: qsTr("Rename Group...")
        onTriggered: sidebarMenu.nameWanted(sidebarMenu.rowId, sidebarMenu.name, "")
    }
    AppMenuItem {
        text: qsTr("Delete Group...")
        onTriggered: App.platforms.deleteGroup(sidebarMenu.rowId)
    }
}
