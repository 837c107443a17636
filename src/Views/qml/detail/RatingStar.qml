import QtQuick
import Ludarium

// One star of the rating.
Item {
    id: star

    required property int index
    property int lit: 0
    signal entered
    signal exited
    signal pressed
    readonly property int size: Math.round(22 * Theme.textScale)
    readonly property bool full: index < lit

    width: size + Theme.space4
    height: size + Theme.space4

    AppIcon {
        anchors.centerIn: parent
        name: star.full ? "star.fill" : "star"
        color: star.full ? Theme.warning : Theme.textSecondary
        size: star.size
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onContainsMouseChanged: containsMouse ? star.entered() : star.exited()
        onClicked: star.pressed()
    }
}
