import QtQuick
import Ludarium

// The title, which a logo in the header takes the place of.
AppText {
    readonly property bool hasLogo: App.detail.media.logo !== ""

    text: App.detail.title
    visible: !hasLogo
    // A long word still fits a narrow pane.
    font.pixelSize: Math.min(Theme.textHeadline, Math.max(Theme.textBody, width / 8))
    font.weight: Font.DemiBold
    // A title in another direction keeps its place above the rest.
    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
    maximumLineCount: 5
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
