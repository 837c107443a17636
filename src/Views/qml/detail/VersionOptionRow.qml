import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One version: its label, its kind and its sound.
ItemDelegate {
    id: row

    required property int index
    required property string label
    required property string versionType
    required property string audioType
    property bool marked: false

    implicitHeight: Math.max(Math.round(1.4 * Theme.rowHeight), body.implicitHeight + 2 * Theme.space8)
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    topPadding: Theme.space8
    bottomPadding: Theme.space8
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: audioType === "" ? qsTr("%1, %2").arg(label).arg(versionType) : qsTr("%1, %2, %3").arg(label).arg(versionType).arg(audioType)
    Accessible.checkable: true
    Accessible.checked: marked

    contentItem: Item {
        Rectangle {
            id: radio

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            width: Math.round(16 * Theme.textScale)
            height: width
            radius: width / 2
            color: Theme.transparent
            border.width: row.marked ? Math.round(width / 3) : 1
            border.color: row.marked ? Theme.accent : Theme.textSecondary
        }
        Flow {
            id: body

            anchors.left: radio.right
            anchors.leftMargin: Theme.space12
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.space8

            AppText {
                width: Math.min(implicitWidth, body.width)
                text: row.label
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            VersionBadge {
                text: row.versionType
            }
            AudioBadge {
                visible: row.audioType !== ""
                text: row.audioType
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.marked ? Theme.selection : row.hovered ? Theme.hover : Theme.transparent
    }
}
