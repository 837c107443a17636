import QtQuick
import QtQuick.Controls.Basic
import Ludarium

ScrollBar {
    id: bar

    minimumSize: 0.04
    padding: 2

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Theme.textSecondary : Theme.border
        visible: bar.size < 1
    }
}
