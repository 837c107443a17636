import QtQuick
import Ludarium

// A chart with its title, or a word in its place while there is nothing to show.
Rectangle {
    id: panel

    required property string title
    property string note
    property bool empty: false
    property string emptyText: qsTr("No data yet")
    default property alias content: place.data

    implicitHeight: column.implicitHeight + 2 * Theme.space16
    radius: Theme.radiusCover
    color: Theme.surface
    border.width: 1
    border.color: Theme.border

    Column {
        id: column

        x: Theme.space16
        y: Theme.space16
        width: parent.width - 2 * Theme.space16
        spacing: Theme.space12

        Column {
            width: parent.width
            spacing: 2

            AppText {
                width: parent.width
                text: panel.title
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            AppText {
                width: parent.width
                visible: text !== ""
                text: panel.note
                color: Theme.textSecondary
                font.pixelSize: Theme.textSmall
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        AppText {
            width: parent.width
            height: 72
            visible: panel.empty
            text: panel.emptyText
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Column {
            id: place

            width: parent.width
            visible: !panel.empty
            spacing: Theme.space8
        }
    }
}
