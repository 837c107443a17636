import QtQuick
import Ludarium

// What is known to be special about the game.
Rectangle {
    id: banner

    readonly property bool critical: App.detail.critical
    readonly property var issues: App.detail.issues

    visible: issues.length > 0
    implicitHeight: column.implicitHeight + 2 * Theme.space12
    radius: Theme.radius
    color: critical ? Theme.noticeOrangeGround : Theme.noticeBlueGround
    Accessible.role: Accessible.Note
    Accessible.name: heading.text

    Column {
        id: column

        x: Theme.space12
        y: Theme.space12
        width: parent.width - 2 * Theme.space12
        spacing: Theme.space12

        Row {
            width: parent.width
            spacing: Theme.space8

            AppIcon {
                id: sign

                anchors.verticalCenter: parent.verticalCenter
                name: banner.critical ? "exclamationmark.triangle.fill" : "info.circle.fill"
                color: banner.critical ? Theme.noticeOrange : Theme.noticeBlue
            }
            AppText {
                id: heading

                width: parent.width - sign.width - Theme.space8
                text: banner.critical ? qsTr("Known Issues") : qsTr("Game Notes")
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
        }
        Repeater {
            model: banner.issues

            GameExceptionRow {
                required property var modelData

                width: parent ? parent.width : 0
                severity: modelData.severity
                notes: modelData.notes
                emulator: modelData.emulator
            }
        }
    }
}
