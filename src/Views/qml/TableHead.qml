import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Rectangle {
    id: head

    required property TableColumns columns

    implicitHeight: Theme.rowHeight
    color: Theme.window
    z: 2

    Row {
        x: Theme.space16
        height: parent.height

        Repeater {
            model: head.columns.list

            AbstractButton {
                id: button

                required property var modelData
                readonly property bool sorts: modelData.order !== ""
                readonly property bool sorted: sorts && App.browse.sortOrder === modelData.order

                width: head.columns.widthOf(modelData.share)
                height: head.height
                enabled: sorts
                focusPolicy: sorts ? Qt.TabFocus : Qt.NoFocus
                Accessible.role: Accessible.ColumnHeader
                Accessible.name: modelData.title
                onClicked: App.browse.sortOrder = modelData.order

                contentItem: Row {
                    spacing: Theme.space4

                    AppText {
                        anchors.verticalCenter: parent.verticalCenter
                        text: button.modelData.title
                        font.pixelSize: Theme.textSmall
                        font.weight: button.sorted ? Font.DemiBold : Font.Normal
                        color: button.sorted || button.hovered ? Theme.text : Theme.textSecondary
                        Accessible.ignored: true
                    }
                    AppIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: button.sorted
                        name: "down"
                        size: 12
                    }
                }
                background: Item {
                    FocusRing {
                        visible: button.visualFocus
                        anchors.margins: 2
                    }
                }
            }
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.border
    }
}
