pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

// Where in the assistant one is.
Row {
    id: row

    required property var steps
    required property int current

    // With little room only the current step says its name.
    readonly property bool narrow: width < 440 * Theme.textScale

    spacing: Theme.space8
    Accessible.ignored: true

    Repeater {
        model: row.steps

        Item {
            id: step

            required property int index
            required property string modelData

            width: (row.width - (row.steps.length - 1) * row.spacing) / row.steps.length
            height: label.implicitHeight + 3 + Theme.space8

            Rectangle {
                width: parent.width
                height: 3
                radius: 1.5
                color: step.index <= row.current ? Theme.accent : Theme.border
            }
            AppText {
                id: label

                y: 3 + Theme.space8
                width: row.narrow ? implicitWidth : parent.width
                x: row.narrow ? Math.min(0, row.width - step.x - width) : 0
                visible: !row.narrow || step.index === row.current
                text: step.modelData
                color: step.index === row.current ? Theme.text : Theme.textSecondary
                font.pixelSize: Theme.textSmall
                font.weight: step.index === row.current ? Font.DemiBold : Font.Normal
                Accessible.ignored: true
            }
        }
    }
}
