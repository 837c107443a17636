import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// Chooses the facet whose values are listed.
AbstractButton {
    id: tab

    required property string kind
    readonly property bool chosen: App.browse.facets.kind === kind

    implicitWidth: implicitContentWidth + 2 * Theme.space8
    implicitHeight: Theme.rowHeight
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selected: chosen
    onClicked: App.browse.facets.kind = kind
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: AppText {
        text: tab.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: tab.chosen ? Theme.accent : tab.hovered ? Theme.text : Theme.textSecondary
        font.weight: tab.chosen ? Font.DemiBold : Font.Normal
        Accessible.ignored: true
    }
    background: Item {
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 2
            color: tab.chosen ? Theme.accent : Theme.border
        }
        FocusRing {
            visible: tab.visualFocus
            anchors.margins: 1
        }
    }
}
