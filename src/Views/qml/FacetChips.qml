import QtQuick
import Ludarium

// What narrows the games, each to be taken away by a click.
Flow {
    id: chips

    // What the title says already is no chip.
    readonly property var shown: {
        const list = [];
        for (const facet of App.browse.facets.active)
            if (facet.text !== App.browse.title)
                list.push(facet);
        return list;
    }

    padding: Theme.space12
    topPadding: Theme.space8
    bottomPadding: 0
    spacing: Theme.space8
    visible: shown.length > 0
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Filters")

    Repeater {
        model: chips.shown
        delegate: RemovableChip {
            required property var modelData

            text: modelData.text
            onClicked: App.browse.facets.set(modelData.kind, "")
        }
    }
    RemovableChip {
        text: qsTr("Clear all")
        plain: true
        onClicked: App.browse.facets.clear()
    }
}
