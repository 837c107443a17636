import QtQuick
import Ludarium

// How far the user has come, with a menu to say so.
AppButton {
    id: button

    iconName: "flag"
    text: App.game.progressTexts[App.game.progress] ?? ""
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    Accessible.name: qsTr("Progress: %1").arg(text)
    Accessible.role: Accessible.ButtonMenu
    onClicked: menu.popup(button, 0, button.height + Theme.space4)

    AppMenu {
        id: menu

        Instantiator {
            model: App.game.progressTexts
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)

            AppMenuItem {
                required property int index
                required property string modelData

                text: modelData
                choice: true
                chosen: App.game.progress === index
                onTriggered: App.game.setProgress(index)
            }
        }
    }
}
