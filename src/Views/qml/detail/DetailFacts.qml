import QtQuick
import Ludarium

DetailSection {
    id: facts

    title: qsTr("Facts")

    Repeater {
        model: App.detail.facts

        DetailFact {
            required property var modelData

            width: parent ? parent.width : 0
            name: modelData.name
            value: modelData.value
            kind: modelData.kind
        }
    }
}
