import QtQuick
import Ludarium

Rectangle {
    id: head

    implicitHeight: Theme.rowHeight
    color: Theme.window
    z: 2

    Row {
        x: Theme.space16
        height: head.height

        TableHeadCell {
            column: 0
            text: qsTr("Title")
            order: "Title"
        }
        TableHeadCell {
            column: 1
            text: qsTr("Platform")
        }
        TableHeadCell {
            column: 2
            text: qsTr("Year")
            order: "Year"
        }
        TableHeadCell {
            column: 3
            text: qsTr("Developer")
            order: "Developer"
        }
        TableHeadCell {
            column: 4
            text: qsTr("Genre")
        }
        TableHeadCell {
            column: 5
            text: qsTr("Rating")
            order: "Rating"
        }
        TableHeadCell {
            column: 6
            text: qsTr("Plays")
            order: "Most Played"
        }
        TableHeadCell {
            column: 7
            text: qsTr("Last Played")
            order: "Recently Played"
        }
        TableHeadCell {
            column: 8
            text: qsTr("Play Time")
        }
        TableHeadCell {
            column: 9
            text: qsTr("Status")
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
    }
}
