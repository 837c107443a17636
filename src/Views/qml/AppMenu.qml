import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Menu {
    id: menu

    padding: Theme.space4
    delegate: AppMenuItem {}
    background: Rectangle {
        implicitWidth: 288
        radius: Theme.radius
        color: Theme.raised
        border.width: 1
        border.color: Theme.border
    }
}
