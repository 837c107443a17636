import QtQuick
import Ludarium

// What floating surfaces stand on.
Rectangle {
    radius: Theme.radius
    color: Theme.raised
    border.width: 1
    border.color: Theme.border
}
