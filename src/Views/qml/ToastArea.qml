import QtQuick
import Ludarium

// Short notes about finished work; each stays a while and goes by itself.
Column {
    id: area

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

            anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
            width: label.implicitWidth + 2 * Theme.space16 + symbol.width + Theme.space8
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
                name: "check"
                color: Theme.success
                size: 16
            }
            AppText {
                id: label

                anchors.left: symbol.right
                anchors.leftMargin: Theme.space8
                anchors.verticalCenter: parent.verticalCenter
                text: toast.note
                Accessible.ignored: true
            }
        }
    }
    Connections {
        target: App
        function onToast(text: string) {
            notes.append({
                "note": text
            });
        }
    }
}
