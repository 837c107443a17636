import QtQuick
import Ludarium

AppMenuItem {
    required property int stars

    choice: true
    chosen: App.game.rating === stars
    text: stars === 0 ? qsTr("No Rating") : "★".repeat(stars)
    Accessible.name: stars === 0 ? text : qsTr("%n star(s)", "", stars)
    onTriggered: App.game.setRating(stars)
}
