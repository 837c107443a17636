import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The head of one column; a click sorts, where the library has an order for it, and its right edge can be dragged.
AbstractButton {
    id: cell

    required property int column
    property string order
    readonly property bool sorted: order !== "" && App.browse.sortOrder === order
    readonly property real columnWidth: App.browse.table.widths[column]

    width: Math.round(columnWidth * Theme.textScale)
    height: parent ? parent.height : 0
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.ColumnHeader
    Accessible.name: sorted ? qsTr("%1, sorted").arg(text) : text
    onClicked: {
        if (order !== "")
            App.browse.sortOrder = order;
    }

    // The rows are what the keyboard finds when it comes back to the table.
    onActiveFocusChanged: {
        if (!activeFocus)
            focus = false;
    }
    // The keyboard's way of dragging the edge.
    function widen(by: real) {
        App.browse.table.setWidth(column, columnWidth + by);
        App.browse.table.save();
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onPressed: event => {
        if (event.modifiers === Qt.ControlModifier && (event.key === Qt.Key_Left || event.key === Qt.Key_Right)) {
            cell.widen(event.key === Qt.Key_Left ? -Theme.space16 : Theme.space16);
            event.accepted = true;
        }
    }

    contentItem: Row {
        spacing: Theme.space4

        AppText {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, cell.width - Theme.space12 - (cell.sorted ? Theme.space16 : 0))
            text: cell.text
            font.pixelSize: Theme.textSmall
            font.weight: cell.sorted ? Font.DemiBold : Font.Normal
            color: cell.sorted || (cell.hovered && cell.order !== "") ? Theme.text : Theme.textSecondary
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
        Rectangle {
            x: parent.width - Theme.space8
            anchors.verticalCenter: parent.verticalCenter
            width: 1
            height: Math.round(parent.height * 0.5)
            color: handle.containsMouse || handle.pressed ? Theme.accent : Theme.border
        }
    }
    MouseArea {
        id: handle

        property real startWidth: 0
        property real startX: 0

        x: parent.width - Theme.space8 - 5
        width: 11
        height: parent.height
        hoverEnabled: true
        preventStealing: true
        cursorShape: Qt.SplitHCursor
        onPressed: mouse => {
            startWidth = cell.columnWidth;
            startX = mapToItem(cell.parent, mouse.x, 0).x;
        }
        onPositionChanged: mouse => {
            if (pressed)
                App.browse.table.setWidth(cell.column, startWidth + (mapToItem(cell.parent, mouse.x, 0).x - startX) / Theme.textScale);
        }
        onReleased: App.browse.table.save()
        onDoubleClicked: App.browse.table.resetWidth(cell.column)
    }
}
