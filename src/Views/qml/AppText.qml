import QtQuick
import Ludarium

// Text of the program and of the data alike: always plain, so that no title is read as markup.
Text {
    color: Theme.text
    font.pixelSize: Theme.textBody
    textFormat: Text.PlainText
    elide: Text.ElideRight
}
