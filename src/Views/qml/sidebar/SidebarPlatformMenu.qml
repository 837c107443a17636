import QtQuick
import QtQml.Models
import Ludarium

SidebarMenu {
    id: sidebarMenu
    readonly property string groupId: opened ? App.platforms.groupOf(rowId) : ""

    AppMenuItem {
        text: qsTr("Show Games")
        onTriggered: App.sidebar.select(sidebarMenu.row)
    }
    AppMenuSeparator {}
    SidebarMenu {
        id: moveMenu

        title: qsTr("Move to Group")
        rowId: sidebarMenu.rowId

        Instantiator {
            model: App.platforms.groups
            delegate: AppMenuItem {
                required property var modelData
                readonly property SidebarMenu owner: menu as SidebarMenu

                text: modelData.name
                choice: true
                chosen: owner !== null && owner.opened && App.platforms.groupOf(owner.rowId) === modelData.id
                onTriggered: App.platforms.putInto(owner.rowId, modelData.id)
            }
            onObjectAdded: (index, object) => moveMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => moveMenu.removeItem(object)
        }
        AppMenuSeparator {}
        AppMenuItem {
            text: qsTr("New Group...")
            onTriggered: sidebarMenu.nameWanted("", "", sidebarMenu.rowId)
        }
    }
    AppMenuItem {
        text: qsTr("Remove from Group")
        enabled: sidebarMenu.groupId !== ""
        why: qsTr("It is in no group.")
        onTriggered: App.platforms.takeOutOfGroup(sidebarMenu.rowId)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: qsTr("Sort by Name")
        choice: true
        chosen: !App.sidebar.sortByCount
        onTriggered: App.sidebar.sortByCount = false
    }
    AppMenuItem {
        text: qsTr("Sort by Game Count")
        choice: true
        chosen: App.sidebar.sortByCount
        onTriggered: App.sidebar.sortByCount = true
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: qsTr("Delete Platform...")
        enabled: !App.library.loading
        why: qsTr("Not while the library is loading.")
        onTriggered: App.platforms.deletePlatform(sidebarMenu.rowId)
    }
}
