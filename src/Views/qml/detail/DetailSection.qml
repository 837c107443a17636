import QtQuick
import Ludarium

// A part of the pane under its heading.
Column {
    id: section

    required property string title

    spacing: Theme.space8

    AppText {
        width: parent.width
        topPadding: Theme.space4
        text: section.title
        color: Theme.textSecondary
        font.pixelSize: Theme.textSmall
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
