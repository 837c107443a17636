import QtQuick
import Ludarium

// What the cover of a game tells of it: whether it can be played at once, whether it is a favourite, and how many
// variants stand behind it.
Item {
    id: badges

    required property bool favorite
    required property bool installed
    required property bool compressed
    required property bool downloadable
    required property int variants

    Row {
        x: Theme.space8
        y: Theme.space8
        spacing: Theme.space4

        Badge {
            visible: badges.installed
            iconName: "check"
            ink: Theme.badgeGood
        }
        Badge {
            visible: badges.compressed && !badges.installed
            iconName: "archive"
        }
        Badge {
            visible: badges.downloadable && !badges.installed && !badges.compressed
            iconName: "download"
        }
        Badge {
            visible: badges.variants > 1
            iconName: "stack"
            text: qsTr("%L1").arg(badges.variants)
        }
    }
    Badge {
        x: badges.width - width - Theme.space8
        y: Theme.space8
        visible: badges.favorite
        iconName: "favorite"
        ink: Theme.badgeStar
    }
}
