import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// The pictures of the game over the whole window, one at a time.
Popup {
    id: viewer

    property int index: 0
    readonly property int count: App.detail.media.count

    parent: T.Overlay.overlay
    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    padding: 0
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape

    function show(at: int) {
        index = at;
        open();
    }
    function step(by: int) {
        index = Math.max(0, Math.min(count - 1, index + by));
    }

    Connections {
        target: App.detail
        function onGameSelected() {
            viewer.close();
        }
    }
    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.viewer
    }
    contentItem: GalleryPicture {
        focus: true
        index: viewer.index
        count: viewer.count
        onStepped: by => viewer.step(by)
        onJumped: to => viewer.index = to
        onClosed: viewer.close()
    }
    onOpened: contentItem.forceActiveFocus()
}
