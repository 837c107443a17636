import QtQuick
import Ludarium

// The columns of the list: their shares of the width, and which order a click on the head gives.
QtObject {
    required property real width

    readonly property var list: [
        {
            "title": qsTr("Title"),
            "role": "title",
            "share": 0.36,
            "order": "Title"
        },
        {
            "title": qsTr("Platform"),
            "role": "platform",
            "share": 0.18,
            "order": ""
        },
        {
            "title": qsTr("Year"),
            "role": "year",
            "share": 0.08,
            "order": "Year"
        },
        {
            "title": qsTr("Developer"),
            "role": "developer",
            "share": 0.2,
            "order": "Developer"
        },
        {
            "title": qsTr("Genre"),
            "role": "genre",
            "share": 0.18,
            "order": ""
        }
    ]

    function widthOf(share: real): real {
        return Math.floor(share * (width - 2 * Theme.space16));
    }
}
