import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A chip that goes when it is pressed.
AbstractButton {
    id: chip

    // Without ground and cross: what acts on all chips.
    property bool plain: false

    implicitHeight: Math.round(Theme.textSmall * 2.1)
    implicitWidth: Math.min(parent ? parent.width - 2 * Theme.space12 : 400, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: Theme.space12
    rightPadding: plain ? Theme.space12 : Theme.space12 + Math.round(16 * Theme.textScale)
    topPadding: 0
    bottomPadding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: plain ? text : qsTr("Remove filter %1").arg(text)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: AppText {
        text: chip.text
        verticalAlignment: Text.AlignVCenter
        font.pixelSize: Theme.textSmall
        color: chip.plain ? Theme.accent : Theme.text
        Accessible.ignored: true
    }
    indicator: AppIcon {
        x: chip.width - width - Theme.space8
        y: (chip.height - height) / 2
        visible: !chip.plain
        name: "close"
        color: chip.hovered ? Theme.text : Theme.textSecondary
        size: Math.round(13 * Theme.textScale)
    }
    background: Rectangle {
        radius: height / 2
        color: chip.hovered ? Theme.hover : chip.plain ? Theme.transparent : Theme.raised

        FocusRing {
            visible: chip.visualFocus
            anchors.margins: -3
            radius: height / 2
        }
    }
}
