import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A submenu of which one entry holds.
AppMenu {
    id: menu

    required property var choices
    required property string current
    signal chosen(string choice)

    Instantiator {
        model: menu.choices
        delegate: AppMenuItem {
            required property string modelData

            text: modelData
            checkable: true
            checked: modelData === menu.current
            onTriggered: {
                menu.chosen(modelData);
                // A click must not uncheck the entry that holds.
                checked = Qt.binding(() => modelData === menu.current);
            }
        }
        onObjectAdded: (index, object) => menu.insertItem(index, object as AppMenuItem)
        onObjectRemoved: (index, object) => menu.removeItem(object as AppMenuItem)
    }
}
