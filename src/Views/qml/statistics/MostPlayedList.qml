pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

Column {
    id: list

    required property var games

    spacing: Theme.space8

    Repeater {
        model: list.games

        Item {
            id: row

            required property var modelData

            width: list.width
            height: texts.implicitHeight
            Accessible.role: Accessible.ListItem
            Accessible.name: qsTr("%1. %2, %3, %4").arg(modelData.rank).arg(modelData.title).arg(modelData.platform).arg(modelData.text)

            AppText {
                id: rank

                width: Math.round(30 * Theme.textScale)
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData.rank
                color: row.modelData.rank <= 3 ? Theme.accent : Theme.textSecondary
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            Column {
                id: texts

                anchors.left: rank.right
                anchors.right: time.left
                anchors.rightMargin: Theme.space12

                AppText {
                    width: parent.width
                    text: row.modelData.title
                    Accessible.ignored: true
                }
                AppText {
                    width: parent.width
                    text: row.modelData.platform
                    color: Theme.textSecondary
                    font.pixelSize: Theme.textSmall
                    Accessible.ignored: true
                }
            }
            AppText {
                id: time

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData.text
                Accessible.ignored: true
            }
        }
    }
}
