import QtQuick
import Ludarium

// The grid with one cell for all variants of a game.
GameGridView {
    Accessible.name: qsTr("Games, variants grouped")
}
