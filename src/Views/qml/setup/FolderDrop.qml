import QtQuick
import Ludarium

// Takes a dropped folder and opens it as a collection.
DropArea {
    keys: ["text/uri-list"]
    onDropped: drop => {
        drop.accept(Qt.CopyAction);
        App.openDropped(drop.urls);
    }
}
