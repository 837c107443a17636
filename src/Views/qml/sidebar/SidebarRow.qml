import QtQuick
import Ludarium

// One line: the heading of a section, or a place of the library with the number of its games.
Item {
    id: row

    required property int index
    required property string name
    required property string kind
    required property string rowId
    required property string icon
    required property int games
    required property int depth
    required property bool expandable
    required property bool expanded
    readonly property SidebarView list: ListView.view as SidebarView

    readonly property bool heading: kind === "section"
    readonly property bool expandsOnly: heading || kind === "group"
    readonly property bool canCollapse: expandable && expanded && App.sidebar.filter === ""
    readonly property bool canExpand: expandable && !expanded
    readonly property bool selected: index === App.sidebar.currentRow
    readonly property bool hovered: list !== null && index === list.hoveredRow
    readonly property bool dropped: list !== null && index === list.dropRow
    readonly property bool cursor: ListView.isCurrentItem && list !== null && list.activeFocus
    readonly property bool truncated: label.truncated
    readonly property int inset: heading ? Theme.space16 : Theme.space24 + Math.min(depth - 1, 5) * step
    // In a narrow sidebar deep rows keep room for their name.
    readonly property int step: Math.max(Theme.space8, Math.min(Theme.space16, (width - 170 * Theme.textScale) / 5))
    readonly property string summary: games < 0 ? name : games === 1 ? qsTr("%1, 1 game").arg(name) : qsTr("%1, %L2 games").arg(name).arg(games)

    width: ListView.view ? ListView.view.width : 0
    implicitHeight: heading ? Theme.rowHeight + (index > 0 ? Theme.space4 : 0) : Theme.rowHeight - 2
    Accessible.role: Accessible.ListItem
    Accessible.name: heading ? name : summary
    Accessible.description: !expandable ? "" : expanded ? qsTr("Expanded") : qsTr("Collapsed")
    Accessible.selected: selected
    Accessible.focusable: true
    Accessible.focused: cursor
    Accessible.onPressAction: App.sidebar.activate(index)

    // The arrow of a folder is a target of its own.
    function isArrow(x: real): bool {
        return expandable && !heading && x < inset;
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.space8
        anchors.rightMargin: Theme.space8
        anchors.topMargin: row.heading && row.index > 0 ? Theme.space4 + 1 : 1
        anchors.bottomMargin: 1
        radius: Theme.radius
        color: row.dropped || row.selected ? Theme.selection : row.hovered ? Theme.hover : Theme.transparent
        border.width: row.cursor || row.dropped ? 2 : 0
        border.color: Theme.accent
    }
    Item {
        anchors.fill: parent
        anchors.topMargin: row.heading && row.index > 0 ? Theme.space4 : 0

        AppIcon {
            anchors.verticalCenter: parent.verticalCenter
            x: row.heading ? parent.width - width - Theme.space16 : row.inset - width - 2
            visible: row.expandable
            name: "chevron"
            size: Math.round(12 * Math.min(Theme.textScale, 1.3))
            rotation: row.expanded ? 90 : 0

            Behavior on rotation {
                NumberAnimation {
                    duration: Theme.fast
                }
            }
        }
        AppIcon {
            id: symbol

            anchors.verticalCenter: parent.verticalCenter
            x: row.inset
            visible: !row.heading
            name: row.icon === "" ? "folder" : row.icon
            size: Math.round(16 * Math.min(Theme.textScale, 1.5))
            color: row.selected ? Theme.accent : Theme.textSecondary
        }
        AppText {
            id: label

            anchors.left: row.heading ? parent.left : symbol.right
            anchors.leftMargin: row.heading ? Theme.space16 : Theme.space8
            anchors.right: row.heading ? parent.right : number.left
            anchors.rightMargin: row.heading ? 2 * Theme.space16 : Theme.space8
            anchors.verticalCenter: parent.verticalCenter
            text: row.name
            // A name in another direction keeps its place beside its icon.
            horizontalAlignment: Text.AlignLeft
            maximumLineCount: 1
            color: row.heading ? Theme.textSecondary : Theme.text
            font.pixelSize: row.heading ? Theme.textCaption : Theme.textBody
            font.weight: row.heading ? Font.DemiBold : row.selected ? Font.Medium : Font.Normal
            font.capitalization: row.heading ? Font.AllUppercase : Font.MixedCase
            font.letterSpacing: row.heading ? 0.6 : 0
            Accessible.ignored: true
        }
        AppText {
            id: number

            anchors.right: parent.right
            anchors.rightMargin: Theme.space16
            anchors.verticalCenter: parent.verticalCenter
            visible: !row.heading
            text: row.games < 0 ? "" : Number(row.games).toLocaleString(Qt.locale(), "f", 0)
            font.pixelSize: Theme.textSmall
            color: row.selected ? Theme.text : Theme.textSecondary
            Accessible.ignored: true
        }
    }
}
