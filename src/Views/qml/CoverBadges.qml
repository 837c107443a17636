import QtQuick
import Ludarium

// What the cover of a game tells of it: whether it can be played at once, how many variants stand behind it, and whether
// it is a favourite.
Item {
    id: marks

    required property string badges
    required property bool favorite
    required property real pixelRatio
    readonly property int size: Math.round(22 * Math.min(Theme.textScale, 1.4))

    Image {
        // Titles of boxes stand at their top.
        x: Theme.space8
        y: marks.height - height - Theme.space8
        width: implicitWidth / marks.pixelRatio
        height: marks.size
        source: marks.badges === "" ? "" : Theme.badgeSource + marks.badges
        sourceSize.height: Math.round(marks.size * marks.pixelRatio)
        Accessible.ignored: true
    }
    Image {
        x: marks.width - width - Theme.space8
        y: Theme.space8
        width: marks.size
        height: marks.size
        source: marks.favorite ? Theme.badgeStarSource : ""
        sourceSize.height: Math.round(marks.size * marks.pixelRatio)
        Accessible.ignored: true
    }
}
