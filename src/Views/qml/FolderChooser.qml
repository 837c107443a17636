import QtQuick
import QtQuick.Dialogs
import Ludarium

// The desktop's own panel for one folder.
FolderDialog {
    id: panel

    readonly property bool wanted: App.dialogs.choosingFolder

    acceptLabel: App.dialogs.folderPrompt
    onWantedChanged: wanted ? open() : close()
    onAccepted: App.dialogs.folderChosen(selectedFolder)
    onRejected: App.dialogs.folderCancelled()
}
