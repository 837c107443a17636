import QtQuick
import Ludarium

// The title, which a logo in the header takes the place of.
AppText {
    readonly property bool hasLogo: App.detail.media.logo !== ""

    text: App.detail.title
    visible: !hasLogo
    font.pixelSize: Theme.textHeadline
    font.weight: Font.DemiBold
    wrapMode: Text.Wrap
    maximumLineCount: 5
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
