import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Button {
    id: button

    property string iconName
    property bool primary: false
    // Destroys something.
    property bool danger: false

    // One that cannot be pressed does not call for it.
    readonly property bool filled: (primary || danger) && enabled
    readonly property color foreground: !filled ? Theme.text : danger ? Theme.dangerText : Theme.accentText
    readonly property color fill: danger ? (down ? Theme.dangerPressed : hovered ? Theme.dangerHovered : Theme.dangerFill) : down ? Theme.accentPressed : hovered ? Theme.accentHovered : Theme.accent

    implicitHeight: Theme.controlHeight
    leftPadding: Theme.space16
    rightPadding: Theme.space16
    opacity: enabled ? 1 : Theme.disabledOpacity
    font.pixelSize: Theme.textBody
    font.weight: primary || danger ? Font.DemiBold : Font.Normal
    Accessible.name: text

    // With its ring, also where it had the focus already when what it stands in was opened.
    function takeFocus() {
        forceActiveFocus(Qt.TabFocusReason);
        focusReason = Qt.TabFocusReason;
    }

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: ButtonFace {
        text: button.text
        iconName: button.iconName
        font: button.font
        color: button.foreground
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.filled ? button.fill : button.down ? Theme.border : button.hovered ? Theme.hover : Theme.raised
        border.width: button.filled ? 0 : 1
        border.color: Theme.border

        FocusRing {
            visible: button.visualFocus
        }
    }
}
