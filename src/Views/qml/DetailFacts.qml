import QtQuick
import Ludarium

// The short facts of the game, one a line, as far as they are known.
Column {
    id: facts

    spacing: Theme.space4
    visible: rows.count > 0

    Repeater {
        id: rows

        model: [
            {
                "name": qsTr("Genre"),
                "value": App.detail.genre
            },
            {
                "name": qsTr("Publisher"),
                "value": App.detail.publisher
            },
            {
                "name": qsTr("Series"),
                "value": App.detail.series
            }
        ].filter(fact => fact.value !== "")

        Item {
            id: fact

            required property var modelData

            width: facts.width
            height: value.implicitHeight
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%1: %2").arg(modelData.name).arg(modelData.value)

            AppText {
                id: name

                width: Math.round(76 * Theme.textScale)
                text: fact.modelData.name
                color: Theme.textSecondary
                Accessible.ignored: true
            }
            AppText {
                id: value

                x: name.width
                width: parent.width - name.width
                text: fact.modelData.value
                wrapMode: Text.Wrap
                maximumLineCount: 3
                Accessible.ignored: true
            }
        }
    }
}
