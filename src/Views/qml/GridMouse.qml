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
        App.browse.click(row);
        grid.forceActiveFocus();
        if (event.button === Qt.RightButton)
            menuWanted();
    }
    onDoubleClicked: event => {
        grid.forceActiveFocus();
        if (event.button === Qt.LeftButton && App.browse.doubleClick(rowAt(Qt.point(event.x, event.y))))
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
        // The badges of a cell change with what can be done with its game.
        readonly property string offer: mouse.hovered?.badges === undefined ? "" : App.browse.offer(mouse.hovered.index)

        x: mouse.hovered ? mouse.hovered.x + mouse.hovered.coverX + mouse.hovered.coverWidth + mouse.pool.x - mouse.x - width - Theme.space8 : 0
        y: mouse.hovered ? mouse.hovered.y + mouse.hovered.coverY + mouse.hovered.coverHeight + mouse.pool.y - mouse.y - height - Theme.space8 : 0
        visible: offer !== ""
        iconName: offer === "install" ? "package" : offer === "download" ? "obtain" : "play"
        text: (offer === "install" ? qsTr("Install %1") : offer === "download" ? qsTr("Download %1") : qsTr("Play %1")).arg(mouse.hovered?.title ?? "")
        onClicked: {
            App.browse.click(mouse.hovered.index);
            mouse.grid.forceActiveFocus();
            App.launch.act();
        }
    }
}
