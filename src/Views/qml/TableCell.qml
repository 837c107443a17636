import QtQuick
import Ludarium

// One text of a row of the list.
AppText {
    required property real share

    width: parent ? Math.floor(share * parent.width) : 0
    height: parent ? parent.height : 0
    rightPadding: Theme.space12
    verticalAlignment: Text.AlignVCenter
    color: Theme.textSecondary
    Accessible.ignored: true
}
