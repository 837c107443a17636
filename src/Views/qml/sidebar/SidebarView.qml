import QtQuick

// What a row knows of its list.
ListView {
    property int hoveredRow: -1
    // Where what is dragged would go.
    property int dropRow: -1
}
