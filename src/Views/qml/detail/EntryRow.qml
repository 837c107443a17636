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
        implicitHeight: Math.max(Theme.rowHeight, implicitContentHeight + 2 * Theme.space4)
        leftPadding: Theme.space8
        rightPadding: Theme.space8
        topPadding: 0
        bottomPadding: 0
        enabled: entry.reason === ""
        opacity: enabled ? 1 : Theme.disabledOpacity
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        text: entry.name
        Accessible.role: Accessible.Button
        Accessible.name: entry.detail === "" ? entry.name : qsTr("%1, %2").arg(entry.name).arg(entry.detail)
        Accessible.description: entry.reason
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: entry.opened()

        contentItem: EntryFace {
            name: entry.name
            iconName: entry.icons[entry.kind] ?? "doc.text.fill"
            detail: entry.detail
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
