import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// The question that is open, over the whole window. The first button is the one that Return presses; Escape is the
// last.
Popup {
    id: dialog

    readonly property bool wanted: App.dialogs.active
    // Long or many buttons stand below one another.
    readonly property bool stacked: App.dialogs.buttons.length > 3 || App.dialogs.buttons.join("").length > 48

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(460, (parent ? parent.width : 460) - 2 * Theme.space24)
    padding: Theme.space24
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: wanted

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.fast
        }
    }

    contentItem: FocusScope {
        implicitHeight: column.implicitHeight
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: App.dialogs.title
        Accessible.description: App.dialogs.text
        Keys.onEscapePressed: App.dialogs.dismiss()

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
                height: Math.min(contentHeight, Math.max(120, (dialog.parent ? dialog.parent.height : 600) - 280))
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
                stacked: dialog.stacked
            }
        }
    }

    onOpened: buttons.focusFirst()
    Connections {
        target: App.dialogs
        function onCurrentChanged() {
            if (App.dialogs.active)
                buttons.focusFirst();
        }
    }
}
