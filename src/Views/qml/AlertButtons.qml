import QtQuick
import Ludarium

// The buttons of a question in their order.
Item {
    id: buttons

    property bool stacked: false

    implicitHeight: flow.implicitHeight

    function focusFirst() {
        const first = repeater.itemAt(0) as AppButton;
        if (first)
            first.forceActiveFocus(Qt.TabFocusReason);
    }

    Grid {
        id: flow

        anchors.right: parent.right
        columns: buttons.stacked ? 1 : Math.max(1, repeater.count)
        spacing: Theme.space8

        Repeater {
            id: repeater

            model: App.dialogs.buttons

            AppButton {
                required property int index
                required property string modelData

                width: buttons.stacked ? buttons.width : Math.max(88, implicitWidth)
                text: modelData
                primary: index === 0
                onClicked: App.dialogs.answer(index)
            }
        }
    }
}
