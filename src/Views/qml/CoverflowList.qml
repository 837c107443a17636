import QtQuick
import QtQuick.Window
import Ludarium

// The row of covers, with one of them in the middle.
ListView {
    id: row

    required property real coverWidth
    required property real coverHeight
    // While its rows or their sizes change, a list that stands far from its start would make every cover before the
    // place where it stands.
    property bool attached: false
    readonly property real pixelRatio: Screen.devicePixelRatio
    // Of pictures, in pixels of the screen; not every width that the dragged edge of a window goes through.
    property int requestWidth: 0
    // How far the middles of two covers are apart; they overlap.
    readonly property real slot: Math.max(1, Math.round(coverWidth * 0.42))

    signal menuWanted

    activeFocusOnTab: true
    orientation: ListView.Horizontal
    model: attached ? App.browse.games : null
    keyNavigationEnabled: false
    highlightRangeMode: ListView.StrictlyEnforceRange
    highlightMoveDuration: Theme.slow
    highlightMoveVelocity: -1
    snapMode: ListView.SnapToItem
    boundsBehavior: Flickable.DragOverBounds
    preferredHighlightBegin: (width - slot) / 2
    preferredHighlightEnd: (width + slot) / 2
    // Covers beyond the edges reach into the view.
    cacheBuffer: Math.round(coverWidth)
    clip: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Games")
    delegate: CoverflowCell {}
    onCoverWidthChanged: requestWidth === 0 ? resized.triggered() : resized.restart()
    onPixelRatioChanged: resized.restart()
    Timer {
        id: resized

        interval: 150
        onTriggered: row.requestWidth = Math.round(row.coverWidth * row.pixelRatio)
    }
    // What the fingers have brought to the middle is selected.
    onMovementEnded: App.browse.currentRow = currentIndex

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => App.browse.moveBy(event.angleDelta.y + event.angleDelta.x < 0 ? 1 : -1)
    }
}
