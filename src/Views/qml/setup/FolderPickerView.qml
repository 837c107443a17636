import QtQuick
import Ludarium

// Asks for the folder of a collection; it can be dropped here too.
Sheet {
    id: sheet

    wantedWidth: 520 * Math.min(Theme.textScale, 1.4)
    contentItem: FolderPickerContent {
        onCancelled: sheet.close()
    }
    onOpened: (contentItem as FolderPickerContent).focusFirst()

    Connections {
        target: App
        function onCollectionOpened() {
            sheet.close();
        }
    }
}
