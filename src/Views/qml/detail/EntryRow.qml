import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// Something beside the game that can be opened.
HintArea {
    id: entry

    required property string name
    required property string kind
    required property string detail
    readonly property var icons: ({
            "manual": "book.fill",
            "extras": "folder.fill",
            "setup": "gearshape.fill",
            "document": "doc.text.fill",
            "application": "app.fill",
            "image": "picture",
            "video": "movie",
            "audio": "note",
            "hint": "lightbulb.fill",
            "archive": "package"
        })
    signal opened

    implicitHeight: button.implicitHeight

    AbstractButton {
        id: button

        width: parent.width
        implicitHeight: Math.max(Theme.rowHeight, label.implicitHeight + 2 * Theme.space4)
        leftPadding: Theme.space8
        rightPadding: Theme.space8
        topPadding: 0
        bottomPadding: 0
        enabled: entry.reason === ""
        opacity: enabled ? 1 : 0.5
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        text: entry.name
        Accessible.role: Accessible.Button
        Accessible.name: entry.detail === "" ? entry.name : qsTr("%1, %2").arg(entry.name).arg(entry.detail)
        Accessible.description: entry.reason
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: entry.opened()

        contentItem: Item {
            AppIcon {
                id: icon

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                name: entry.icons[entry.kind] ?? "doc.text.fill"
                size: Math.round(16 * Theme.textScale)
            }
            AppText {
                id: label

                anchors.left: icon.right
                anchors.leftMargin: Theme.space8
                anchors.right: size.left
                anchors.rightMargin: size.text === "" ? 0 : Theme.space8
                anchors.verticalCenter: parent.verticalCenter
                text: entry.name
                wrapMode: Text.Wrap
                maximumLineCount: 2
                Accessible.ignored: true
            }
            AppText {
                id: size

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: entry.detail
                color: Theme.textSecondary
                font.pixelSize: Theme.textSmall
                Accessible.ignored: true
            }
        }
        background: Rectangle {
            radius: Theme.radiusSmall
            color: button.down ? Theme.raised : button.hovered ? Theme.hover : Theme.transparent

            FocusRing {
                visible: button.visualFocus
                anchors.margins: -2
            }
        }
    }
}
