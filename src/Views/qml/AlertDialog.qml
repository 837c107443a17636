import QtQuick
import Ludarium

// The question that is open, over the whole window. Return presses the first button, or the last where one of them
// destroys something; Escape is always the last.
Sheet {
    id: dialog

    wantedWidth: 460 * Math.min(Theme.textScale, 1.6)
    visible: App.dialogs.active
    contentItem: AlertContent {
        focus: true
        textLimit: Math.max(120, (dialog.parent ? dialog.parent.height : 600) - 280)
    }

    function focusPreferred() {
        (contentItem as AlertContent).focusPreferred();
    }
    onOpened: focusPreferred()
    Connections {
        target: App.dialogs
        function onCurrentChanged() {
            if (App.dialogs.active && dialog.opened)
                dialog.focusPreferred();
        }
    }
}
