import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A button that is only a text.
AbstractButton {
    id: link

    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight + 2 * Theme.space4
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: AppText {
        text: link.text
        color: Theme.accent
        font.pixelSize: Theme.textSmall
        font.underline: link.hovered
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Item {
        FocusRing {
            visible: link.visualFocus
        }
    }
}
