import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// Asks for one short text.
Popup {
    id: dialog

    required property string title
    required property string acceptText
    property string placeholder: ""
    // Why the text cannot be taken; empty when it can.
    property string problem: ""
    readonly property string name: (contentItem as NameEntry).text.trim()
    readonly property bool acceptable: name !== "" && problem === ""

    signal accepted(name: string)

    function start(text: string) {
        open();
        (contentItem as NameEntry).begin(text);
    }
    function accept() {
        if (!acceptable)
            return;
        const text = name;
        close();
        accepted(text);
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(400, (parent ? parent.width : 400) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true

    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    contentItem: NameEntry {
        focus: true
        title: dialog.title
        acceptText: dialog.acceptText
        placeholder: dialog.placeholder
        problem: dialog.problem
        acceptable: dialog.acceptable
        onAccepted: dialog.accept()
        onAbandoned: dialog.close()
    }
}
