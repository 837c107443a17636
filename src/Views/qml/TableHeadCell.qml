import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The head of one column; a click sorts, where the library has an order for it.
AbstractButton {
    id: cell

    required property real share
    property string order
    readonly property bool sorted: order !== "" && App.browse.sortOrder === order

    width: parent ? Math.floor(share * parent.width) : 0
    height: parent ? parent.height : 0
    enabled: order !== ""
    focusPolicy: enabled ? Qt.TabFocus : Qt.NoFocus
    Accessible.role: Accessible.ColumnHeader
    Accessible.name: sorted ? qsTr("%1, sorted").arg(text) : text
    onClicked: App.browse.sortOrder = order

    contentItem: Row {
        spacing: Theme.space4

        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: cell.text
            font.pixelSize: Theme.textSmall
            font.weight: cell.sorted ? Font.DemiBold : Font.Normal
            color: cell.sorted || cell.hovered ? Theme.text : Theme.textSecondary
            Accessible.ignored: true
        }
        AppIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: cell.sorted
            name: "down"
            size: 12
        }
    }
    background: Item {
        FocusRing {
            visible: cell.visualFocus
            anchors.margins: 2
        }
    }
}
