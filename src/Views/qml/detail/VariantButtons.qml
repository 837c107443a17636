import QtQuick
import Ludarium

// The entries of the selected game's group, one of which is shown.
DetailSection {
    id: section

    readonly property var variants: App.detail.variants.list

    title: qsTr("Variants")
    visible: variants.length > 1

    Flow {
        id: flow

        width: parent.width
        spacing: Theme.space8

        Repeater {
            model: section.variants

            VariantButton {
                required property var modelData

                width: Math.min(implicitWidth, parent ? parent.width : implicitWidth)
                text: modelData.text
                help: modelData.help
                installed: modelData.installed
                checked: modelData.selected
                onClicked: App.detail.variants.select(modelData.id)
            }
        }
    }
}
