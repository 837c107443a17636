import QtQuick
import QtQuick.Window
import QtQuick.Controls.Basic
import Ludarium

Rectangle {
    id: pane

    readonly property Item focusItem: Window.activeFocusItem
    signal closed

    color: Theme.surface
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Game details")
    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    function showPicture(index: int) {
        viewer.show(index);
    }
    // What the keyboard reaches is brought into view.
    onFocusItemChanged: {
        for (let item = focusItem; item; item = item.parent)
            if (item === content) {
                const top = focusItem.mapToItem(content, 0, 0).y + content.y - Theme.space16;
                const bottom = top + Math.min(focusItem.height, scroller.height) + 2 * Theme.space16;
                if (top < scroller.contentY)
                    scroller.contentY = Math.max(0, top);
                else if (bottom > scroller.contentY + scroller.height)
                    scroller.contentY = bottom - scroller.height;
            }
    }

    AppText {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.space24
        visible: !App.detail.hasGame
        text: qsTr("Select a game to see what it is about.")
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Flickable {
        id: scroller

        anchors.fill: parent
        visible: App.detail.hasGame
        contentHeight: header.height + content.height + Theme.space12 + Theme.space24
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: AppScrollBar {}

        DetailHeader {
            id: header

            width: scroller.width
            onClosed: pane.closed()
        }
        DetailContent {
            id: content

            x: Theme.space16
            y: header.height + Theme.space12
            width: scroller.width - 2 * Theme.space16
            onPictureOpened: index => pane.showPicture(index)
        }
    }
    GalleryViewer {
        id: viewer
    }
    Connections {
        target: App.detail
        function onGameSelected() {
            scroller.contentY = 0;
        }
    }
}
