import QtQuick
import QtQuick.Controls.Basic
import Ludarium

FocusScope {
    id: content

    // Height that the text may take before it scrolls.
    property real textLimit: 320

    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.Dialog
    Accessible.name: App.dialogs.title
    Accessible.description: App.dialogs.text
    Keys.onEscapePressed: App.dialogs.dismiss()

    function focusPreferred() {
        buttons.focusPreferred();
    }

    Column {
        id: column

        width: parent.width
        spacing: Theme.space12

        Row {
            width: parent.width
            spacing: Theme.space12

            AppIcon {
                id: symbol

                name: App.dialogs.style === "informational" ? "info" : "warning"
                color: App.dialogs.style === "critical" ? Theme.danger : App.dialogs.style === "warning" ? Theme.warning : Theme.accent
                size: Math.round(24 * Theme.textScale)
            }
            AppText {
                width: parent.width - symbol.width - Theme.space12
                text: App.dialogs.title
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
        Flickable {
            x: symbol.width + Theme.space12
            width: parent.width - x
            height: Math.min(contentHeight, content.textLimit)
            contentHeight: body.implicitHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: AppScrollBar {}

            AppText {
                id: body

                width: parent.width - Theme.space12
                text: App.dialogs.text
                color: Theme.textSecondary
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                lineHeight: 1.25
            }
        }
        Item {
            width: 1
            height: Theme.space4
        }
        AlertButtons {
            id: buttons

            width: parent.width
        }
    }
}
