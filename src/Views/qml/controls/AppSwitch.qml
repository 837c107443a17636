import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A flag. The label stands beside it in its row; `text` is what a screen reader says.
Switch {
    id: control

    padding: 0
    implicitWidth: indicator.implicitWidth
    implicitHeight: Theme.controlHeight
    Accessible.name: text
    Keys.onReturnPressed: click()
    Keys.onEnterPressed: click()

    function click() {
        toggle();
        toggled();
    }

    contentItem: Item {}
    indicator: Rectangle {
        y: (control.height - height) / 2
        implicitWidth: Math.round(38 * Theme.textScale)
        implicitHeight: Math.round(22 * Theme.textScale)
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.raised
        border.width: 1
        border.color: control.checked ? Theme.accent : Theme.textSecondary
        opacity: control.enabled ? 1 : Theme.disabledOpacity

        Rectangle {
            x: control.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: parent.height - 6
            height: width
            radius: width / 2
            color: control.checked ? Theme.accentText : Theme.textSecondary

            Behavior on x {
                NumberAnimation {
                    duration: Theme.fast
                }
            }
        }
        FocusRing {
            radius: parent.radius + 4
            visible: control.visualFocus
        }
    }
}
