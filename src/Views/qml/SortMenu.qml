import Ludarium

AppMenu {
    title: qsTr("Sort By")

    SortItem {
        text: "Title"
    }
    SortItem {
        text: "Year"
    }
    SortItem {
        text: "Developer"
    }
    SortItem {
        text: "Rating"
    }
    SortItem {
        text: "Recently Played"
    }
    SortItem {
        text: "Most Played"
    }
}
