import QtQuick
import Ludarium

Item {
    id: row

    required property string severity
    required property string notes
    required property string emulator
    readonly property var look: ({
            "critical": ["exclamationmark.triangle.fill", Theme.noticeRed],
            "recommended": ["star.fill", Theme.noticeOrange],
            "optional": ["lightbulb.fill", Theme.noticeYellow],
            "info": ["info.circle", Theme.noticeBlue]
        })[severity] ?? ["info.circle", Theme.noticeBlue]

    implicitHeight: texts.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: emulator === "" ? notes : notes + "\n" + advice.text

    AppIcon {
        id: icon

        anchors.left: parent.left
        name: row.look[0]
        color: row.look[1]
        size: Math.round(16 * Theme.textScale)
    }
    Column {
        id: texts

        anchors.left: icon.right
        anchors.leftMargin: Theme.space8
        anchors.right: parent.right
        spacing: Theme.space4

        AppText {
            width: parent.width
            text: row.notes
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
        AppText {
            id: advice

            width: parent.width
            visible: row.emulator !== ""
            text: qsTr("Recommended: %1").arg(row.emulator)
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
