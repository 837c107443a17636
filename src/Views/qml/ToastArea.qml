pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

// Short notes about finished work, and about what did not happen; each stays a while and goes by itself.
Column {
    id: area

    readonly property real widest: Math.min(560 * Theme.textScale, (parent ? parent.width : 560) - 2 * Theme.space24)

    spacing: Theme.space8

    ListModel {
        id: notes
    }
    Timer {
        interval: 4000
        repeat: true
        running: notes.count > 0
        onTriggered: notes.remove(0)
    }
    Repeater {
        model: notes

        Rectangle {
            id: toast

            required property string note
            required property bool warning

            readonly property real chrome: 2 * Theme.space16 + symbol.width + Theme.space8

            anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
            width: label.width + chrome
            height: label.implicitHeight + 2 * Theme.space12
            radius: Theme.radius
            color: Theme.raised
            border.width: 1
            border.color: Theme.border
            Accessible.role: Accessible.AlertMessage
            Accessible.name: note

            AppIcon {
                id: symbol

                x: Theme.space16
                anchors.verticalCenter: parent.verticalCenter
                name: toast.warning ? "warning" : "check"
                color: toast.warning ? Theme.warning : Theme.success
                size: 16
            }
            AppText {
                id: label

                anchors.left: symbol.right
                anchors.leftMargin: Theme.space8
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, area.widest - toast.chrome)
                text: toast.note
                wrapMode: Text.Wrap
                maximumLineCount: 4
                Accessible.ignored: true
            }
        }
    }
    Connections {
        target: App
        function onToast(text: string) {
            notes.append({
                "note": text,
                "warning": false
            });
        }
        function onWarned(text: string) {
            // Many changes that fail for one reason say it once.
            for (let i = 0; i < notes.count; ++i)
                if (notes.get(i).note === text)
                    return;
            notes.append({
                "note": text,
                "warning": true
            });
        }
    }
}
