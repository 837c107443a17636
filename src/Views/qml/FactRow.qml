import QtQuick
import Ludarium

// One short fact about a game; nothing when it is not known.
Item {
    id: fact

    required property string name
    required property string value

    implicitHeight: valueText.implicitHeight
    visible: value !== ""
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("%1: %2").arg(name).arg(value)

    AppText {
        id: nameText

        width: Math.round(76 * Theme.textScale)
        text: fact.name
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    AppText {
        id: valueText

        x: nameText.width
        width: fact.width - nameText.width
        text: fact.value
        wrapMode: Text.Wrap
        maximumLineCount: 3
        Accessible.ignored: true
    }
}
