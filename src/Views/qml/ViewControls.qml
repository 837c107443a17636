import QtQuick
import Ludarium

// How the games are shown, in what order, and narrowed to what. Wraps where there is no room for one row.
Flow {
    id: controls

    // Width without wrapping.
    readonly property real oneRow: 6 * Theme.controlHeight + 2 * 2 + 3 * Theme.space8 + (slider.visible ? slider.width + Theme.space8 : 0)

    // Only what no menu has room for.
    property bool terse: false

    spacing: Theme.space8

    Row {
        spacing: 2

        IconButton {
            iconName: "list"
            text: qsTr("List")
            checked: App.browse.viewMode === "List"
            onClicked: App.browse.viewMode = "List"
        }
        IconButton {
            iconName: "grid"
            text: qsTr("Grid")
            checked: App.browse.viewMode === "Grid"
            onClicked: App.browse.viewMode = "Grid"
        }
        IconButton {
            iconName: "coverflow"
            text: qsTr("Coverflow")
            checked: App.browse.viewMode === "Coverflow"
            onClicked: App.browse.viewMode = "Coverflow"
        }
    }
    GridSizeSlider {
        id: slider

        visible: App.browse.viewMode === "Grid" && !controls.terse
    }
    IconButton {
        id: sortButton

        iconName: "sort"
        text: qsTr("Sort by %1").arg(App.browse.sortOrder)
        down: sortMenu.visible || pressed
        onClicked: sortMenu.popup(sortButton, 0, sortButton.height + Theme.space4)

        SortMenu {
            id: sortMenu
        }
    }
    IconButton {
        id: filterButton

        iconName: "filter"
        text: qsTr("Filter")
        checked: App.browse.facets.active.length > 0
        down: filterPopup.visible || pressed
        onClicked: filterPopup.visible ? filterPopup.close() : filterPopup.open()

        FilterPopup {
            id: filterPopup

            y: filterButton.height + Theme.space4
            margins: Theme.space8
        }
    }
    IconButton {
        iconName: "stack"
        text: App.browse.grouped ? qsTr("Group Duplicates: On") : qsTr("Group Duplicates: Off")
        checked: App.browse.grouped
        onClicked: App.browse.grouped = !App.browse.grouped
    }
}
