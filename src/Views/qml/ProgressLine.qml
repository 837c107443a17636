import QtQuick
import Ludarium

Rectangle {
    id: line

    // 0 to 1.
    required property real value

    implicitHeight: 4
    radius: 2
    color: Theme.border
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("%1 percent").arg(Math.round(value * 100))

    Rectangle {
        width: Math.max(0, Math.min(1, line.value)) * line.width
        height: line.height
        radius: line.radius
        color: Theme.accent

        Behavior on width {
            NumberAnimation {
                duration: Theme.slow
            }
        }
    }
}
