import QtQuick
import Ludarium

// The covers with one for all variants of a game.
CoverflowView {
    Accessible.name: qsTr("Games, variants grouped")
}
