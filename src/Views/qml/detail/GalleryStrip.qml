import QtQuick
import Ludarium

// The pictures of the selected game side by side, each under the name of its kind.
ListView {
    signal opened(int index)

    implicitHeight: 84 + Theme.space4 + Math.round(1.5 * Theme.textCaption)
    // One picture alone is the cover, which stands above.
    visible: count > 1
    orientation: ListView.Horizontal
    spacing: Theme.space8
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    keyNavigationEnabled: true
    highlightMoveDuration: Theme.fast
    model: App.detail.media
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Pictures")
    // Its pictures come after it.
    onActiveFocusChanged: currentIndex = Math.max(0, currentIndex)
    Keys.onReturnPressed: opened(currentIndex)
    Keys.onEnterPressed: opened(currentIndex)
    Keys.onSpacePressed: opened(currentIndex)

    delegate: GalleryTile {
        onOpened: {
            (ListView.view as GalleryStrip).currentIndex = index;
            (ListView.view as GalleryStrip).opened(index);
        }
    }
}
