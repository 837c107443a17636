import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// Says why what it holds is disabled, which a disabled control cannot say itself.
Item {
    id: area

    property string reason

    implicitWidth: children.length > 0 ? children[0].implicitWidth : 0
    implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
    ToolTip.visible: hover.hovered && reason !== ""
    ToolTip.delay: 400
    ToolTip.text: reason

    HoverHandler {
        id: hover
    }
}
