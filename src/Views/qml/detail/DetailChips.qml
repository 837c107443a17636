import QtQuick
import Ludarium

Flow {
    id: chips

    spacing: Theme.space8

    Repeater {
        model: App.detail.chips

        FilterChip {
            required property var modelData

            width: Math.min(implicitWidth, parent ? parent.width : implicitWidth)
            kind: modelData.kind
            text: modelData.text
        }
    }
}
