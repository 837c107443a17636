import QtQuick
import Ludarium

// One short fact about a game, which narrows the main view to its value where there is a filter of its kind.
Item {
    id: fact

    required property string name
    required property string value
    required property string kind
    readonly property bool stacked: width < 190 * Theme.textScale

    implicitHeight: valueText.y + valueText.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("%1: %2").arg(name).arg(value)

    AppText {
        id: nameText

        anchors.left: parent.left
        width: fact.stacked ? parent.width : Math.round(96 * Theme.textScale)
        text: fact.name
        color: Theme.textSecondary
        Accessible.ignored: true
    }
    AppText {
        id: valueText

        anchors.right: parent.right
        y: fact.stacked ? nameText.height : 0
        width: parent.width - (fact.stacked ? 0 : nameText.width + Theme.space8)
        text: fact.value
        color: fact.kind !== "" && area.containsMouse ? Theme.accent : Theme.text
        font.underline: fact.kind !== "" && (area.containsMouse || fact.activeFocus)
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        maximumLineCount: 4
        Accessible.ignored: true

        FocusRing {
            visible: fact.activeFocus
        }
        MouseArea {
            id: area

            anchors.fill: parent
            enabled: fact.kind !== ""
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: App.detail.narrowTo(fact.kind, fact.value)
        }
    }
    activeFocusOnTab: kind !== ""
    Keys.onReturnPressed: App.detail.narrowTo(kind, value)
    Keys.onEnterPressed: App.detail.narrowTo(kind, value)
    Keys.onSpacePressed: App.detail.narrowTo(kind, value)
    Keys.enabled: kind !== ""
}
