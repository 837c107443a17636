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
        section.delegate: Item {
            id: heading

            required property string section

            width: ListView.view.width
            height: label.implicitHeight + Theme.space16 + Theme.space4

            AppText {
                id: label

                anchors.left: parent.left
                anchors.leftMargin: Theme.space16
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Theme.space4
                text: heading.section
                color: Theme.textSecondary
                font.pixelSize: Theme.textCaption
                font.weight: Font.DemiBold
                font.capitalization: Font.AllUppercase
                font.letterSpacing: 0.6
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }
        delegate: SidebarRow {
            width: ListView.view.width
            viewFocused: rows.activeFocus
        }
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
