import QtQuick
import QtQuick.Controls.Basic
import Ludarium

FocusScope {
    id: content

    signal abandoned

    function begin() {
        field.clear();
        field.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: column.implicitHeight

    Column {
        id: column

        width: parent.width
        spacing: Theme.space8

        Row {
            FacetTab {
                kind: "genre"
                text: qsTr("Genre")
            }
            FacetTab {
                kind: "developer"
                text: qsTr("Developer")
            }
            FacetTab {
                kind: "publisher"
                text: qsTr("Publisher")
            }
            FacetTab {
                kind: "year"
                text: qsTr("Year")
            }
        }
        SearchField {
            id: field

            width: parent.width
            placeholderText: qsTr("Search the list")
            onTextChanged: App.browse.facets.search = text
            onAbandoned: content.abandoned()
            Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
        }
        ListView {
            id: list

            width: parent.width
            height: 9 * Theme.rowHeight
            clip: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            reuseItems: true
            keyNavigationEnabled: true
            model: App.browse.facets.values
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Values")
            ScrollBar.vertical: AppScrollBar {}
            delegate: FacetRow {}

            function toggleCurrent() {
                if (currentItem)
                    (currentItem as FacetRow).clicked();
            }
            Keys.onReturnPressed: toggleCurrent()
            Keys.onEnterPressed: toggleCurrent()
            Keys.onSpacePressed: toggleCurrent()

            AppText {
                anchors.centerIn: parent
                visible: list.count === 0
                text: qsTr("Nothing found")
                color: Theme.textSecondary
            }
        }
    }
}
