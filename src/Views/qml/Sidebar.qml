import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Rectangle {
    id: sidebar

    color: Theme.sidebar

    ListView {
        id: rows

        anchors.fill: parent
        topMargin: Theme.space8
        bottomMargin: Theme.space8
        clip: true
        model: App.sidebar
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: -1
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Library sections")

        section.property: "section"
        section.delegate: SidebarHeading {}
        delegate: SidebarRow {}
        ScrollBar.vertical: AppScrollBar {}

        Keys.onUpPressed: step(-1)
        Keys.onDownPressed: step(1)

        function step(by: int) {
            const row = Math.max(0, Math.min(count - 1, App.sidebar.currentRow + by));
            App.sidebar.select(row);
            positionViewAtIndex(row, ListView.Contain);
        }
    }
}
