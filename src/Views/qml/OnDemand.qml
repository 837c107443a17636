import QtQuick

// A part of a window that is made when it is first wanted, and then stays.
Loader {
    property bool wanted: false
    property bool made: false

    function make(): QtObject {
        made = true;
        return item;
    }

    active: wanted || made
    onLoaded: made = true
}
