import QtQuick
import Ludarium

// The frame that shows where the keyboard is.
Rectangle {
    anchors.fill: parent
    anchors.margins: -2
    radius: Theme.radius + 2
    color: Theme.transparent
    border.width: 2
    border.color: Theme.accent
}
