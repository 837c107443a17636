import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The user's own notes, kept when the writing pauses and when the keyboard goes elsewhere.
TextArea {
    id: editor

    implicitHeight: Math.max(Math.round(3.6 * Theme.textBody) + topPadding + bottomPadding, contentHeight + topPadding + bottomPadding)
    leftPadding: Theme.space8
    rightPadding: Theme.space8
    topPadding: Theme.space8
    bottomPadding: Theme.space8
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    selectByMouse: true
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    placeholderText: qsTr("Write a note...")
    placeholderTextColor: Theme.textSecondary
    font.pixelSize: Theme.textBody
    Accessible.name: qsTr("Your notes")
    Accessible.role: Accessible.EditableText
    // Out of the field, rather than a tabulator in it.
    KeyNavigation.priority: KeyNavigation.BeforeItem
    KeyNavigation.tab: nextItemInFocusChain(true)
    Keys.onEscapePressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    function load() {
        if (text !== App.detail.notes)
            text = App.detail.notes;
    }

    Component.onCompleted: load()
    onTextChanged: {
        if (activeFocus)
            App.detail.editNotes(text);
    }
    onActiveFocusChanged: {
        if (!activeFocus)
            App.detail.saveNotes();
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.raised
        border.width: editor.activeFocus ? 2 : 1
        border.color: editor.activeFocus ? Theme.accent : Theme.border
    }
    Connections {
        target: App.detail
        function onChanged() {
            editor.load();
        }
    }
}
