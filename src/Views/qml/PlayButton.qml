import QtQuick
import Ludarium

// The round button on a cover that the pointer is over.
IconButton {
    id: button

    iconName: "play"
    focusPolicy: Qt.NoFocus
    background: Rectangle {
        radius: height / 2
        color: button.down ? Theme.accentPressed : Theme.accent
    }
    contentItem: Item {
        AppIcon {
            anchors.centerIn: parent
            name: button.iconName
            color: Theme.accentText
            size: Math.round(16 * Theme.textScale)
        }
    }
}
