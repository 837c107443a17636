import QtQuick
import Ludarium

// The places of the library, with a field that narrows them.
FocusScope {
    id: sidebar

    signal gamesWanted

    function focusFilter() {
        filterField.forceActiveFocus(Qt.ShortcutFocusReason);
        filterField.selectAll();
    }
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Sidebar")

    Rectangle {
        anchors.fill: parent
        color: Theme.sidebar
    }
    SearchField {
        id: filterField

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.space12
        placeholderText: qsTr("Filter sidebar")
        text: App.sidebar.filter
        onTextChanged: App.sidebar.filter = text
        onAbandoned: rows.forceActiveFocus(Qt.OtherFocusReason)
        Keys.onDownPressed: rows.enter()
        Keys.onReturnPressed: rows.enter()
        Keys.onEnterPressed: rows.enter()
    }
    SidebarList {
        id: rows

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: filterField.bottom
        anchors.topMargin: Theme.space8
        anchors.bottom: parent.bottom
        focus: true
        onGamesWanted: sidebar.gamesWanted()
        onMenuWanted: (row, x, y) => menus.open(row, x, y)
        onRenameWanted: row => menus.rename(row)
        onDeletionWanted: row => menus.remove(row)

        SidebarMenus {
            id: menus

            list: rows
        }
    }
    AppText {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: rows.top
        anchors.margins: Theme.space16
        visible: App.sidebar.count === 0
        text: qsTr("Nothing here is called \"%1\".").arg(App.sidebar.filter)
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        maximumLineCount: 4
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
