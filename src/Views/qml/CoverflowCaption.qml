import QtQuick
import Ludarium

// The title of the cover in the middle, and what else is to be known at a glance.
Column {
    id: caption

    required property CoverflowCell cell
    // Height of the whole view, of which the caption is a part.
    required property real room
    // The one of several variants that is selected.
    readonly property bool oneOfMany: cell !== null && cell.variants > 1 && cell.selected

    bottomPadding: Math.min(Theme.space24, Math.round(room * 0.05))
    spacing: Theme.space4

    AppText {
        x: Theme.space24
        width: parent.width - 2 * Theme.space24
        text: caption.cell ? caption.cell.title : ""
        font.pixelSize: Math.max(Theme.textBody, Math.min(Theme.textLarge, Math.round(caption.room * 0.07)))
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
    AppText {
        x: Theme.space24
        width: parent.width - 2 * Theme.space24
        text: caption.cell ? App.browse.joined([caption.oneOfMany ? App.game.platform : caption.cell.platform, caption.cell.year, caption.cell.developer, caption.cell.variants > 1 ? qsTr("%L1 variants").arg(caption.cell.variants) : ""], "  ·  ") : ""
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
