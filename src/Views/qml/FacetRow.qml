import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One value of the listed facet.
AbstractButton {
    id: row

    required property string modelData
    readonly property bool chosen: {
        App.browse.facets.active;
        return App.browse.facets.value(App.browse.facets.kind) === modelData;
    }
    readonly property bool current: ListView.isCurrentItem && (ListView.view?.activeFocus ?? false)

    text: modelData
    width: ListView.view ? ListView.view.width : 0
    implicitHeight: Theme.rowHeight
    leftPadding: Theme.space8
    rightPadding: 2 * Theme.space16
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selected: chosen
    onClicked: App.browse.facets.toggle(modelData)

    contentItem: AppText {
        text: row.text
        verticalAlignment: Text.AlignVCenter
        color: row.chosen ? Theme.accent : Theme.text
        Accessible.ignored: true
    }
    indicator: AppIcon {
        x: row.width - width - Theme.space12
        y: (row.height - height) / 2
        visible: row.chosen
        name: "check"
        color: Theme.accent
        size: Math.round(14 * Theme.textScale)
    }
    background: Rectangle {
        radius: Theme.radiusSmall
        color: row.hovered || row.current ? Theme.hover : Theme.transparent
        border.width: row.current ? 1 : 0
        border.color: Theme.accent
    }
}
