import QtQuick
import Ludarium

// One text of a row of the list, as wide as its column.
AppText {
    required property int column

    width: Math.round(App.browse.table.widths[column] * Theme.textScale)
    height: parent ? parent.height : 0
    rightPadding: Theme.space12
    verticalAlignment: Text.AlignVCenter
    color: Theme.textSecondary
    Accessible.ignored: true
}
