import QtQuick
import Ludarium

// The menus of the rows, and the question for a name that an entry asks.
Item {
    id: menus

    required property ListView list

    function rowOf(index: int): SidebarRow {
        return list.itemAtIndex(index) as SidebarRow;
    }
    function open(index: int, x: real, y: real) {
        const row = rowOf(index);
        const menu = !row ? null : row.kind === "platform" ? platformMenu : row.kind === "group" ? groupMenu : row.kind === "playlist" ? playlistMenu : row.heading ? sectionMenu : null;
        if (menu)
            menu.openAt(row, x, y);
    }
    function rename(index: int) {
        const row = rowOf(index);
        if (row && row.kind === "group")
            askName(row.rowId, row.name, "");
    }
    function remove(index: int) {
        const row = rowOf(index);
        if (row && row.kind === "group")
            App.platforms.deleteGroup(row.rowId);
        else if (row && row.kind === "platform")
            App.platforms.deletePlatform(row.rowId);
    }
    function askName(group: string, name: string, platform: string) {
        nameDialog.group = group;
        nameDialog.platform = platform;
        nameDialog.start(name);
    }

    SidebarPlatformMenu {
        id: platformMenu

        onNameWanted: (group, name, platform) => menus.askName(group, name, platform)
    }
    SidebarGroupMenu {
        id: groupMenu

        onNameWanted: (group, name, platform) => menus.askName(group, name, platform)
    }
    SidebarPlaylistMenu {
        id: playlistMenu
    }
    SidebarSectionMenu {
        id: sectionMenu

        onNameWanted: (group, name, platform) => menus.askName(group, name, platform)
    }
    NameDialog {
        id: nameDialog

        property string group: ""
        property string platform: ""

        title: group === "" ? qsTr("New Group") : qsTr("Rename Group")
        acceptText: group === "" ? qsTr("Create") : qsTr("Rename")
        placeholder: qsTr("Name of the group")
        problem: App.platforms.isTaken(name, group) ? qsTr("There is a group of this name already.") : ""
        onAccepted: name => {
            if (group === "")
                App.platforms.createGroup(name, platform);
            else
                App.platforms.renameGroup(group, name);
        }
        onClosed: menus.list.forceActiveFocus(Qt.PopupFocusReason)
    }
}
