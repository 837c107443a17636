import QtQuick
import QtQuick.Controls.Basic
import Ludarium

MenuSeparator {
    padding: Theme.space4
    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.border
    }
}
