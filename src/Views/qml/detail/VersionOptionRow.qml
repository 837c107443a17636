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

    implicitHeight: Math.max(Math.round(1.4 * Theme.rowHeight), implicitContentHeight + 2 * Theme.space8)
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    topPadding: Theme.space8
    bottomPadding: Theme.space8
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: audioType === "" ? qsTr("%1, %2").arg(label).arg(versionType) : qsTr("%1, %2, %3").arg(label).arg(versionType).arg(audioType)
    Accessible.checkable: true
    Accessible.checked: marked

    contentItem: VersionOptionFace {
        label: row.label
        versionType: row.versionType
        audioType: row.audioType
        marked: row.marked
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.marked ? Theme.selection : row.hovered ? Theme.hover : Theme.transparent
    }
}
