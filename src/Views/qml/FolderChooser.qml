import QtQuick
import QtQuick.Dialogs
import Ludarium

// The desktop's own panel for one folder, or Qt's where the desktop has none.
FolderDialog {
    id: panel

    acceptLabel: App.dialogs.folderPrompt
    onAccepted: App.dialogs.folderChosen(selectedFolder)
    onRejected: App.dialogs.folderCancelled()
    Component.onCompleted: {
        open();
        paint((parentWindow as AppWindow).ground);
    }

    property Connections closing: Connections {
        target: App.dialogs
        function onFolderChanged() {
            if (!App.dialogs.choosingFolder)
                panel.close();
        }
    }

    // Qt's panel takes the colours of the window but for two: its path stands on white, and its selected row has the
    // colour of text on the accent, on another ground.
    function paint(item: var) {
        if (item.objectName === "folderDialogListView")
            item.palette.highlightedText = Theme.text;
        else if (item.upButton && item.background)
            item.background.color = Theme.window;
        for (let i = 0; i < item.children.length; ++i)
            paint(item.children[i]);
    }
}
