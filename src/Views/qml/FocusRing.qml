import QtQuick
import Ludarium

// The frame that shows where the keyboard is.
Rectangle {
    anchors.fill: parent
    anchors.margins: -4
    radius: Theme.radius + 4
    color: Theme.transparent
    border.width: 2
    border.color: Theme.accent
}
