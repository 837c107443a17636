import QtQuick

// What all cells of a grid share.
QtObject {
    property real cellWidth: 0
    property real cellHeight: 0
    property real coverWidth: 0
    property bool focused: false
    property int hoveredIndex: -1
    property real pixelRatio: 1
    // Of pictures, in pixels of the screen.
    property int requestWidth: 0
    // While whole pages fly by nothing is asked for.
    property bool rushing: false
}
