pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One standing bar a day. The day under the mouse tells its date and time.
Item {
    id: chart

    required property var days
    // Hours of the longest day.
    required property real longest

    readonly property real plotHeight: 120
    readonly property real step: days.length > 0 ? width / days.length : 0

    implicitHeight: plotHeight + dates.implicitHeight + topLabel.implicitHeight + Theme.space8

    AppText {
        id: topLabel

        text: qsTr("%1 h").arg(Number(chart.longest).toLocaleString(Qt.locale(), "f", 1))
        color: Theme.textSecondary
        font.pixelSize: Theme.textCaption
        Accessible.ignored: true
    }
    Rectangle {
        y: topLabel.implicitHeight
        width: parent.width
        height: 1
        color: Theme.border
    }
    Rectangle {
        y: topLabel.implicitHeight + chart.plotHeight
        width: parent.width
        height: 1
        color: Theme.border
    }
    Repeater {
        model: chart.days

        Item {
            id: day

            required property int index
            required property var modelData

            x: index * chart.step
            y: topLabel.implicitHeight
            width: chart.step
            height: chart.plotHeight
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("%1: %2").arg(modelData.day).arg(modelData.text)
            Accessible.ignored: modelData.share === 0

            Rectangle {
                anchors.bottom: parent.bottom
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.max(2, Math.min(24, parent.width - 4))
                height: day.modelData.share > 0 ? Math.max(3, chart.plotHeight * day.modelData.share) : 0
                radius: Math.min(Theme.radiusSmall, height / 2)
                color: hover.hovered ? Theme.text : Theme.accent
            }
            HoverHandler {
                id: hover
            }
            ToolTip.visible: hover.hovered
            ToolTip.text: qsTr("%1: %2").arg(modelData.day).arg(modelData.text)
        }
    }
    Item {
        id: dates

        y: topLabel.implicitHeight + chart.plotHeight + Theme.space4
        width: parent.width
        implicitHeight: first.implicitHeight

        AppText {
            id: first

            text: chart.days.length > 0 ? chart.days[0].day : ""
            color: Theme.textSecondary
            font.pixelSize: Theme.textCaption
            Accessible.ignored: true
        }
        AppText {
            anchors.right: parent.right
            text: qsTr("Today")
            color: Theme.textSecondary
            font.pixelSize: Theme.textCaption
            Accessible.ignored: true
        }
    }
}
