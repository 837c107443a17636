import QtQuick
import Ludarium

Rectangle {
    id: head

    implicitHeight: Theme.rowHeight
    color: Theme.window
    z: 2

    Row {
        x: Theme.space16
        width: head.width - 2 * Theme.space16
        height: head.height

        TableHeadCell {
            share: TableColumns.title
            text: qsTr("Title")
            order: "Title"
        }
        TableHeadCell {
            share: TableColumns.platform
            text: qsTr("Platform")
        }
        TableHeadCell {
            share: TableColumns.year
            text: qsTr("Year")
            order: "Year"
        }
        TableHeadCell {
            share: TableColumns.developer
            text: qsTr("Developer")
            order: "Developer"
        }
        TableHeadCell {
            share: TableColumns.genre
            text: qsTr("Genre")
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
    }
}
