import QtQuick
import Ludarium

AppButton {
    required property int index
    required property string modelData

    readonly property bool stacked: (parent as Grid)?.columns === 1 && (parent as Grid)?.width > implicitWidth

    width: stacked && parent ? parent.width : Math.max(88, implicitWidth)
    text: modelData
    primary: index === 0 && App.dialogs.destructive < 0
    danger: index === App.dialogs.destructive
    onClicked: App.dialogs.answer(index)
}
