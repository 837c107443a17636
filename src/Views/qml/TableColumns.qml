pragma Singleton
import QtQuick

// The columns of the list as shares of the width.
QtObject {
    readonly property real title: 0.36
    readonly property real platform: 0.18
    readonly property real year: 0.08
    readonly property real developer: 0.2
    readonly property real genre: 0.18
}
