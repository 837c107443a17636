import QtQuick
import Ludarium

// Additional applications or extras: the first of them, and the rest on demand.
DetailSection {
    id: list

    required property var entries
    property int shown: folded
    readonly property int folded: 6
    signal opened(int index)

    visible: entries.length > 0
    spacing: Theme.space4

    Repeater {
        model: Math.min(list.entries.length, list.shown)

        EntryRow {
            required property int index
            readonly property var entry: (parent as EntryList)?.entries[index] ?? ({})

            width: parent ? parent.width : 0
            name: entry.name ?? ""
            kind: entry.kind ?? ""
            detail: entry.detail ?? ""
            reason: entry.reason ?? ""
            onOpened: (parent as EntryList).opened(index)
        }
    }
    LinkButton {
        visible: list.entries.length > list.folded
        text: list.shown < list.entries.length ? qsTr("Show all %L1").arg(list.entries.length) : qsTr("Show less")
        onClicked: list.shown = list.shown < list.entries.length ? list.entries.length : list.folded
    }
    Connections {
        target: App.detail
        function onGameSelected() {
            list.shown = list.folded;
        }
    }
}
