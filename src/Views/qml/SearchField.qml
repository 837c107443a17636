import QtQuick
import QtQuick.Controls.Basic
import Ludarium

TextField {
    id: field

    implicitWidth: 240
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.controlHeight
    rightPadding: Theme.controlHeight
    placeholderText: qsTr("Search")
    placeholderTextColor: Theme.textSecondary
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    font.pixelSize: Theme.textBody
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    Accessible.name: placeholderText
    Accessible.role: Accessible.EditableText

    // Empties the field, or leaves it when it is empty already.
    signal abandoned
    Keys.onEscapePressed: text === "" ? abandoned() : clear()

    background: Rectangle {
        radius: Theme.radius
        color: Theme.surface
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.accent : Theme.border
    }
    AppIcon {
        x: Theme.space8
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: Math.round(16 * Theme.textScale)
    }
    IconButton {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.rightMargin: 2
        implicitWidth: Theme.controlHeight - 6
        implicitHeight: Theme.controlHeight - 6
        visible: field.text !== ""
        focusPolicy: Qt.NoFocus
        iconName: "close"
        text: qsTr("Clear search")
        onClicked: field.clear()
    }
}
