import QtQuick
import Ludarium

// Says why what it holds is disabled, which a disabled control cannot say itself.
Item {
    id: area

    property string reason

    implicitWidth: childrenRect.width
    implicitHeight: childrenRect.height

    AppToolTip {
        visible: hover.hovered && area.reason !== ""
        text: area.reason
    }
    HoverHandler {
        id: hover
    }
}
