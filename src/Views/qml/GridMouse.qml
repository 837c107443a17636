import QtQuick
import Ludarium

// The mouse over the part of a grid that is in view, and what stands on the cover under it.
MouseArea {
    id: mouse

    required property Flickable grid
    required property CellPool pool
    required property real coverWidth
    readonly property int hoveredIndex: containsMouse ? pool.indexAt(x + mouseX - pool.x, y + mouseY - pool.y) : -1
    readonly property GameCell hovered: {
        pool.revision; // the cells move under the mouse
        return pool.itemAtIndex(hoveredIndex) as GameCell;
    }

    signal menuWanted

    // The game at a place of this area; -1 between the cells.
    function rowAt(place: point): int {
        const inPool = Qt.point(x + place.x - pool.x, y + place.y - pool.y);
        const row = pool.indexAt(inPool.x, inPool.y);
        const cell = pool.itemAtIndex(row);
        return cell && inPool.x - cell.x < coverWidth && inPool.y - cell.y < cell.height - Theme.space16 ? row : -1;
    }
    function choose(row: int) {
        App.browse.currentRow = row;
        grid.forceActiveFocus();
    }

    x: grid.contentX
    y: grid.contentY
    z: 1
    width: grid.width
    height: grid.height
    hoverEnabled: true
    acceptedButtons: Qt.LeftButton | Qt.RightButton
    onClicked: event => {
        const row = rowAt(Qt.point(event.x, event.y));
        if (row < 0)
            return;
        choose(row);
        if (event.button === Qt.RightButton)
            menuWanted();
    }
    onDoubleClicked: event => {
        const row = rowAt(Qt.point(event.x, event.y));
        if (row < 0)
            return;
        choose(row);
        App.launch.checkVersionsAndLaunch();
    }

    Rectangle {
        parent: mouse.pool
        z: -1
        x: mouse.hovered ? mouse.hovered.x + mouse.hovered.coverX - 2 : 0
        y: mouse.hovered ? mouse.hovered.y + mouse.hovered.coverY + Theme.space8 : 0
        width: (mouse.hovered?.coverWidth ?? 0) + 4
        height: mouse.hovered?.coverHeight ?? 0
        radius: Theme.radiusCover + 2
        visible: mouse.hovered !== null
        color: Theme.shadow
    }
    PlayButton {
        x: mouse.hovered ? mouse.hovered.x + mouse.hovered.coverX + mouse.hovered.coverWidth + mouse.pool.x - mouse.x - width - Theme.space8 : 0
        y: mouse.hovered ? mouse.hovered.y + mouse.hovered.coverY + mouse.hovered.coverHeight + mouse.pool.y - mouse.y - height - Theme.space8 : 0
        visible: mouse.hovered !== null
        text: qsTr("Play %1").arg(mouse.hovered?.title ?? "")
        onClicked: {
            mouse.choose(mouse.hovered.index);
            App.launch.checkVersionsAndLaunch();
        }
    }
}
