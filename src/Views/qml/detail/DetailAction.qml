import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// A lesser button of the pane: an icon over its name.
HintArea {
    id: action

    required property string iconName
    required property string text
    property bool checked: false
    property bool available: true
    signal clicked

    implicitHeight: button.implicitHeight

    AbstractButton {
        id: button

        width: parent.width
        implicitHeight: implicitContentHeight + 2 * Theme.space8
        topPadding: Theme.space8
        bottomPadding: Theme.space8
        leftPadding: 0
        rightPadding: 0
        enabled: action.available && action.reason === ""
        opacity: enabled ? 1 : Theme.disabledOpacity
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        text: action.text
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.description: action.reason
        Accessible.checkable: action.checked
        Accessible.checked: action.checked
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        onClicked: action.clicked()

        contentItem: ActionFace {
            text: action.text
            iconName: action.iconName
            ink: action.checked ? Theme.accent : Theme.text
        }
        background: Rectangle {
            radius: Theme.radius
            color: button.down ? Theme.raised : button.hovered ? Theme.hover : Theme.transparent

            FocusRing {
                visible: button.visualFocus
                anchors.margins: -2
            }
        }
    }
}
