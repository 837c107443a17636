import QtQuick
import Ludarium

// One figure, large, with what it counts.
Rectangle {
    id: card

    required property string iconName
    required property string label
    required property string value
    property string subtitle

    implicitHeight: column.implicitHeight + 2 * Theme.space16
    radius: Theme.radiusCover
    color: Theme.surface
    border.width: 1
    border.color: Theme.border
    Accessible.role: Accessible.StaticText
    Accessible.name: subtitle === "" ? qsTr("%1: %2").arg(label).arg(value) : qsTr("%1: %2 %3").arg(label).arg(value).arg(subtitle)

    Column {
        id: column

        anchors.verticalCenter: parent.verticalCenter
        x: Theme.space16
        width: parent.width - 2 * Theme.space16
        spacing: Theme.space4

        Row {
            width: parent.width
            spacing: Theme.space8

            AppIcon {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                name: card.iconName
                color: Theme.accent
            }
            AppText {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - symbol.width - Theme.space8
                text: card.label
                color: Theme.textSecondary
                font.pixelSize: Theme.textSmall
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
        Row {
            spacing: Theme.space8

            AppText {
                id: number

                text: card.value
                font.pixelSize: Theme.textHeadline
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            AppText {
                anchors.baseline: number.baseline
                visible: text !== ""
                text: card.subtitle
                color: Theme.textSecondary
                font.pixelSize: Theme.textSmall
                Accessible.ignored: true
            }
        }
    }
}
