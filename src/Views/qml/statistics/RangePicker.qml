import QtQuick
import Ludarium

Flow {
    id: picker

    spacing: Theme.space12

    AppText {
        height: Theme.controlHeight
        text: qsTr("Time Range")
        font.weight: Font.DemiBold
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    AppComboBox {
        label: qsTr("Time Range")
        model: App.statistics.ranges
        chosen: App.statistics.range
        onPicked: choice => App.statistics.range = choice
    }
    AppText {
        height: Theme.controlHeight
        width: Math.min(implicitWidth, picker.width)
        visible: App.statistics.range !== "All Time"
        text: qsTr("Games last played within it")
        color: Theme.textSecondary
        verticalAlignment: Text.AlignVCenter
    }
}
