import QtQuick
import Ludarium

// A setting with the head of its section when it is the first there.
Column {
    id: part

    required property int index
    required property SettingItem modelData
    property bool highlighted: false

    readonly property var before: index > 0 ? App.settings.itemsOf(modelData.tab)[index - 1] : null

    SettingSectionHead {
        visible: text !== "" && (!part.before || part.before.section !== text)
        text: part.modelData.section
    }
    SettingRow {
        width: part.width
        modelData: part.modelData
        highlighted: part.highlighted
    }
}
