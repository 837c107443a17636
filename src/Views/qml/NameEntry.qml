import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The inside of a question for one short text.
Column {
    id: entry

    required property string title
    required property string acceptText
    required property string placeholder
    required property string problem
    required property bool acceptable
    property alias text: field.text

    signal accepted
    signal abandoned

    function begin(text: string) {
        field.text = text;
        field.selectAll();
        field.forceActiveFocus(Qt.PopupFocusReason);
    }

    spacing: Theme.space16
    Accessible.role: Accessible.Dialog
    Accessible.name: title

    AppText {
        width: parent.width
        text: entry.title
        font.pixelSize: Theme.textTitle
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Column {
        width: parent.width
        spacing: Theme.space4

        TextField {
            id: field

            width: parent.width
            implicitHeight: Theme.controlHeight
            leftPadding: Theme.space12
            rightPadding: Theme.space12
            maximumLength: 120
            placeholderText: entry.placeholder
            placeholderTextColor: Theme.textSecondary
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentText
            font.pixelSize: Theme.textBody
            selectByMouse: true
            verticalAlignment: TextInput.AlignVCenter
            Accessible.name: entry.placeholder
            Accessible.role: Accessible.EditableText
            Accessible.description: entry.problem
            onAccepted: entry.accepted()
            background: Rectangle {
                radius: Theme.radius
                color: Theme.window
                border.width: field.activeFocus ? 2 : 1
                border.color: field.activeFocus ? Theme.accent : Theme.border
            }
        }
        AppText {
            width: parent.width
            text: entry.problem
            color: Theme.warning
            font.pixelSize: Theme.textSmall
            wrapMode: Text.Wrap
        }
    }
    Row {
        anchors.right: parent.right
        spacing: Theme.space8

        AppButton {
            text: qsTr("Cancel")
            onClicked: entry.abandoned()
        }
        AppButton {
            text: entry.acceptText
            primary: true
            enabled: entry.acceptable
            onClicked: entry.accepted()
        }
    }
}
