pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

// Bars that lie, longest first: name, bar, time.
Column {
    id: chart

    required property var shares

    readonly property real nameWidth: Math.min(width * 0.38, 150 * Theme.textScale)
    readonly property real timeWidth: 64 * Theme.textScale

    spacing: Theme.space8

    Repeater {
        model: chart.shares

        Item {
            id: bar

            required property var modelData

            width: chart.width
            height: Math.max(name.implicitHeight, 16)
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%1: %2").arg(modelData.name).arg(modelData.text)

            AppText {
                id: name

                width: chart.nameWidth - Theme.space8
                anchors.verticalCenter: parent.verticalCenter
                text: bar.modelData.name
                font.pixelSize: Theme.textSmall
                Accessible.ignored: true
            }
            Rectangle {
                x: chart.nameWidth
                anchors.verticalCenter: parent.verticalCenter
                width: Math.max(2, (bar.width - chart.nameWidth - chart.timeWidth - Theme.space8) * bar.modelData.share)
                height: 12
                radius: Theme.radiusSmall
                color: Theme.accent
            }
            AppText {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: chart.timeWidth
                text: bar.modelData.text
                horizontalAlignment: Text.AlignRight
                color: Theme.textSecondary
                font.pixelSize: Theme.textSmall
                Accessible.ignored: true
            }
        }
    }
}
