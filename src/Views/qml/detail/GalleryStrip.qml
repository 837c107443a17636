import QtQuick
import Ludarium

// The pictures of the selected game side by side, each under the name of its kind.
ListView {
    id: strip

    readonly property int tileWidth: 112
    readonly property int tileHeight: 84
    signal opened(int index)

    implicitHeight: tileHeight + Theme.space4 + Math.round(1.5 * Theme.textCaption)
    // One picture alone is the cover, which stands above.
    visible: count > 1
    orientation: ListView.Horizontal
    spacing: Theme.space8
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    keyNavigationEnabled: true
    highlightMoveDuration: Theme.fast
    model: App.detail.media
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Pictures")
    Keys.onReturnPressed: opened(currentIndex)
    Keys.onEnterPressed: opened(currentIndex)
    Keys.onSpacePressed: opened(currentIndex)

    delegate: Column {
        id: tile

        required property int index
        required property string name
        required property string source
        readonly property bool current: strip.activeFocus && ListView.isCurrentItem

        spacing: Theme.space4
        Accessible.role: Accessible.Button
        Accessible.name: name
        Accessible.onPressAction: strip.opened(index)

        Rectangle {
            width: strip.tileWidth
            height: strip.tileHeight
            radius: Theme.radiusSmall
            color: area.containsMouse ? Theme.hover : Theme.raised
            border.width: tile.current ? 2 : 0
            border.color: Theme.accent

            Image {
                anchors.fill: parent
                anchors.margins: 2
                asynchronous: true
                source: tile.source
                sourceSize.width: width * Screen.devicePixelRatio
                sourceSize.height: height * Screen.devicePixelRatio
                fillMode: Image.PreserveAspectFit
                Accessible.ignored: true
            }
            MouseArea {
                id: area

                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: {
                    strip.currentIndex = tile.index;
                    strip.opened(tile.index);
                }
            }
        }
        AppText {
            width: strip.tileWidth
            text: tile.name
            color: Theme.textSecondary
            font.pixelSize: Theme.textCaption
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
