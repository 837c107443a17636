import QtQuick
import QtQuick.Controls.Basic
import Ludarium

TextField {
    id: field

    property string label

    implicitWidth: Math.round(260 * Math.min(Theme.textScale, 1.6))
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    color: Theme.text
    placeholderTextColor: Theme.textSecondary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    font.pixelSize: Theme.textBody
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    Accessible.name: label

    background: Rectangle {
        radius: Theme.radius
        color: Theme.surface
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : Theme.border
    }
}
