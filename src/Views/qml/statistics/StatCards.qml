pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

// Cards in as many columns as have room.
Grid {
    id: grid

    required property var figures
    property string subtitle
    property real narrowest: 150 * Theme.textScale

    readonly property real cell: (width - (columns - 1) * columnSpacing) / columns

    // No row is left with a gap: of four cards there are four, two or one beside each other.
    function fitting(): int {
        let most = Math.max(1, Math.min(figures.length, Math.floor((width + columnSpacing) / (narrowest + columnSpacing))));
        while (figures.length % most !== 0)
            most -= 1;
        return most;
    }

    columns: fitting()
    columnSpacing: Theme.space12
    rowSpacing: Theme.space12

    Repeater {
        model: grid.figures

        StatCard {
            required property var modelData

            width: grid.cell
            iconName: modelData.icon
            label: modelData.label
            value: modelData.value
            subtitle: grid.subtitle
        }
    }
}
