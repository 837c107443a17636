import QtQuick
import Ludarium

// What comes up beside the games or over them: windows of their own and sheets. Each is made when it is first wanted, as
// the first picture of the window does not wait for them.
Item {
    id: parts

    required property AppWindow window
    readonly property AppWindow logWindow: logs.item as AppWindow
    readonly property AppWindow settingsWindow: settings.item as AppWindow
    readonly property AppWindow statisticsWindow: statistics.item as AppWindow
    readonly property FirstRunSetupView assistant: firstRun.item as FirstRunSetupView
    readonly property FolderPickerView folderPicker: picker.item as FolderPickerView
    // The window in use: what is asked for there lies over it.
    readonly property AppWindow front: inUse(settingsWindow) ?? inUse(logWindow) ?? inUse(statisticsWindow) ?? window

    function inUse(other: AppWindow): AppWindow {
        return other && other.visible && other.active ? other : null;
    }
    function bringUp(part: OnDemand) {
        const shown = part.make() as AppWindow;
        shown.show();
        shown.raise();
        shown.requestActivate();
    }
    function showLogs() {
        bringUp(logs);
    }
    function showSettings() {
        bringUp(settings);
    }
    function showStatistics() {
        bringUp(statistics);
    }
    function showAssistant() {
        (firstRun.make() as FirstRunSetupView).begin();
        if (front === window) {
            window.raise();
            window.requestActivate();
        }
    }
    function showFolderPicker() {
        (picker.make() as FolderPickerView).open();
    }
    function showAbout() {
        (about.make() as AboutDialog).open();
    }

    OnDemand {
        id: logs

        source: made ? "LogWindow.qml" : ""
    }
    OnDemand {
        id: settings

        source: made ? "SettingsWindow.qml" : ""
    }
    OnDemand {
        id: statistics

        source: made ? "StatisticsWindow.qml" : ""
    }
    OnDemand {
        id: firstRun

        sourceComponent: FirstRunSetupView {
            ground: parts.front.ground // qmllint disable unqualified
        }
    }
    OnDemand {
        id: picker

        sourceComponent: FolderPickerView {
            ground: parts.window.ground // qmllint disable unqualified
        }
    }
    OnDemand {
        wanted: App.thumbnails.running
        sourceComponent: ThumbnailSheet {
            ground: parts.front.ground // qmllint disable unqualified
        }
    }
    OnDemand {
        wanted: App.launch.versions.active
        sourceComponent: GameVersionPicker {
            ground: parts.window.ground // qmllint disable unqualified
        }
    }
    OnDemand {
        wanted: App.dialogs.active
        sourceComponent: AlertDialog {
            ground: parts.front.ground // qmllint disable unqualified
        }
    }
    Loader {
        readonly property bool wanted: App.dialogs.choosingFolder

        onWantedChanged: {
            if (wanted)
                setSource("FolderChooser.qml", {
                    "parentWindow": parts.front
                });
        }
    }
    OnDemand {
        id: about

        sourceComponent: AboutDialog {
            ground: parts.window.ground // qmllint disable unqualified
        }
    }
}
