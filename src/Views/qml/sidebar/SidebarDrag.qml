import QtQuick
import Ludarium

// The label that follows the mouse while a platform or a group is dragged.
Rectangle {
    id: drag

    required property ListView list
    property string source: ""
    property string sourceName: ""
    property point start
    property bool active: false
    // Since the last press: what ended as a drag is no click.
    property bool happened: false
    property int target: -1
    // The row that what is dragged would go to.
    readonly property int row: active ? App.sidebar.dropRow(source, target) : -1
    readonly property int edge: Theme.rowHeight

    visible: active
    z: 2
    width: Math.min(label.implicitWidth + 2 * Theme.space12, list.width - Theme.space24)
    height: Theme.rowHeight
    radius: Theme.radius
    color: Theme.raised
    border.width: 1
    border.color: row >= 0 ? Theme.accent : Theme.border
    opacity: 0.95

    // Whether the row can be dragged.
    function prepare(index: int, x: real, y: real): bool {
        const item = list.itemAtIndex(index) as SidebarRow;
        const movable = item !== null && (item.kind === "platform" || item.kind === "group");
        source = movable ? App.sidebar.keyOf(index) : "";
        sourceName = movable ? item.name : "";
        start = Qt.point(x, y);
        happened = false;
        return movable;
    }
    function move(mouseX: real, mouseY: real) {
        if (source === "")
            return;
        if (!active && Math.abs(mouseX - start.x) + Math.abs(mouseY - start.y) < Theme.space8)
            return;
        active = true;
        happened = true;
        x = Math.max(0, Math.min(mouseX + Theme.space8, list.width - width));
        y = mouseY + Theme.space8;
        const inside = mouseX >= 0 && mouseX < list.width && mouseY >= 0 && mouseY < list.height;
        target = inside ? list.indexAt(mouseX, mouseY + list.contentY) : -1;
        scroller.by = mouseY < edge ? -1 : mouseY > list.height - edge ? 1 : 0;
    }
    function finish() {
        if (active)
            App.sidebar.drop(source, target);
        cancel();
    }
    function cancel() {
        source = "";
        target = -1;
        active = false;
        scroller.by = 0;
    }

    AppText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: Theme.space12
        anchors.rightMargin: Theme.space12
        verticalAlignment: Text.AlignVCenter
        text: drag.sourceName
        Accessible.ignored: true
    }
    Timer {
        id: scroller

        property int by: 0
        // Faster the longer it goes on: there may be a thousand rows.
        property int steps: 0

        interval: 30
        repeat: true
        running: drag.active && by !== 0
        onRunningChanged: steps = 0
        onTriggered: {
            ++steps;
            const top = drag.list.originY - drag.list.topMargin;
            const bottom = Math.max(top, drag.list.originY + drag.list.contentHeight + drag.list.bottomMargin - drag.list.height);
            drag.list.contentY = Math.max(top, Math.min(bottom, drag.list.contentY + by * Math.min(Theme.space12 + steps * 2, 8 * Theme.rowHeight)));
        }
    }
}
