import QtQuick
import Ludarium

// What the collection says of the game: its beginning, and the rest on demand.
Column {
    id: overview

    property bool expanded: false
    readonly property int folded: 8

    visible: App.detail.text !== ""
    spacing: Theme.space4

    Connections {
        target: App.detail
        function onGameSelected() {
            overview.expanded = false;
        }
    }

    AppText {
        id: body

        width: parent.width
        text: App.detail.text
        wrapMode: Text.Wrap
        maximumLineCount: overview.expanded ? 100000 : overview.folded
        lineHeight: 1.3
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    LinkButton {
        visible: body.truncated || overview.expanded
        text: overview.expanded ? qsTr("Show less") : qsTr("Show more")
        onClicked: overview.expanded = !overview.expanded
    }
}
