import QtQuick
import Ludarium

// Covers in a row, the selected one in the middle and facing the viewer. Only those on screen are alive.
FocusScope {
    id: flow

    readonly property real coverHeight: Math.max(60, Math.min(row.height * 0.66, width * 0.5))
    readonly property real coverWidth: Math.round(coverHeight * 3 / 4)
    readonly property CoverflowCell current: row.currentItem as CoverflowCell
    readonly property alias list: row

    // At `item`, or at the mouse when there is none.
    signal menuWanted(item: Item)

    function showSelection() {
        if (row.attached)
            row.currentIndex = Math.max(0, App.browse.currentRow);
    }
    function detach() {
        row.attached = false;
        settled.restart();
    }
    function jumpToSelection() {
        row.attached = true;
        row.highlightMoveDuration = 0;
        showSelection();
        row.positionViewAtIndex(row.currentIndex, ListView.SnapPosition);
        row.highlightMoveDuration = Qt.binding(() => Theme.slow);
    }

    CoverflowList {
        id: row

        width: parent.width
        height: Math.round(parent.height - caption.height)
        focus: true
        coverWidth: flow.coverWidth
        coverHeight: flow.coverHeight
        onMenuWanted: flow.menuWanted(null)
        onSlotChanged: flow.detach()

        GameKeys {
            id: keys

            onMenuWanted: flow.menuWanted(flow.current)
        }
        Keys.onPressed: event => keys.handle(event)
    }
    CoverflowCaption {
        id: caption

        anchors.bottom: parent.bottom
        width: parent.width
        cell: flow.current
        room: flow.height
    }

    Timer {
        id: settled

        interval: 0
        onTriggered: flow.jumpToSelection()
    }
    onWidthChanged: detach()
    Component.onCompleted: settled.restart()
    Connections {
        target: App.browse
        function onListAboutToBeReplaced() {
            flow.detach();
        }
        // A cover that was clicked stays where it is until no second click can follow.
        function onCurrentRowChanged() {
            if (!row.moving && !App.browse.clicking && App.browse.currentRow >= 0)
                flow.showSelection();
        }
        function onClickingChanged() {
            if (!App.browse.clicking && !row.moving && App.browse.currentRow >= 0)
                flow.showSelection();
        }
    }
}
