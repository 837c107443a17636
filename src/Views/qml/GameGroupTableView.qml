import QtQuick
import Ludarium

// The list with one row for all variants of a game.
GameTableView {
    Accessible.name: qsTr("Games, variants grouped")
}
