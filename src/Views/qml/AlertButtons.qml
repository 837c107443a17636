import QtQuick
import Ludarium

// The buttons of a question in their order: in a row, or below one another where they are many or long.
Item {
    id: buttons

    readonly property bool stacked: {
        let letters = 0;
        for (const text of App.dialogs.buttons)
            letters += text.length;
        return App.dialogs.buttons.length > 3 || letters > 48;
    }

    implicitHeight: grid.implicitHeight

    function focusPreferred() {
        const preferred = repeater.itemAt(App.dialogs.preferred) as AlertButton;
        if (preferred)
            preferred.takeFocus();
    }

    Grid {
        id: grid

        x: buttons.stacked ? 0 : buttons.width - width
        width: buttons.stacked ? buttons.width : implicitWidth
        columns: buttons.stacked ? 1 : Math.max(1, repeater.count)
        spacing: Theme.space8

        Repeater {
            id: repeater

            model: App.dialogs.buttons
            delegate: AlertButton {}
            // The dialog may have opened before its buttons are made.
            onItemAdded: index => {
                if (index === App.dialogs.preferred)
                    buttons.focusPreferred();
            }
        }
    }
}
