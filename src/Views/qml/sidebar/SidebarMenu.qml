import QtQuick
import Ludarium

// A menu of a row, as the row was when the menu was opened.
AppMenu {
    property int row: -1
    property string rowId: ""
    property string name: ""
    property bool expandable: false
    property bool expanded: false

    // Of a group, or of a new one with a platform in it.
    signal nameWanted(group: string, name: string, platform: string)

    function openAt(item: SidebarRow, x: real, y: real) {
        row = item.index;
        rowId = item.rowId;
        name = item.name;
        expandable = item.expandable;
        expanded = item.expanded;
        popup(item.parent.parent, x, y);
    }
}
