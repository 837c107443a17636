import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A value of the game that narrows the main view to it.
AbstractButton {
    id: chip

    required property string kind

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.round(Theme.textSmall * 2.1)
    leftPadding: Theme.space12
    rightPadding: Theme.space12
    topPadding: 0
    bottomPadding: 0
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Show only %1").arg(text)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    onClicked: App.detail.narrowTo(kind, text)

    contentItem: AppText {
        text: chip.text
        font.pixelSize: Theme.textSmall
        color: chip.hovered ? Theme.text : Theme.textSecondary
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: height / 2
        color: chip.hovered ? Theme.hover : Theme.raised

        FocusRing {
            visible: chip.visualFocus
            anchors.margins: -3
            radius: height / 2
        }
    }
}
