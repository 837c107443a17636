import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

Popup {
    id: about

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 340
    padding: Theme.space24
    modal: true
    focus: true

    T.Overlay.modal: Scrim {}
    background: Rectangle {
        color: Theme.surface
        radius: Theme.radiusDialog
        border.width: 1
        border.color: Theme.border
    }
    contentItem: Column {
        spacing: Theme.space12
        Accessible.role: Accessible.Dialog
        Accessible.name: qsTr("About Ludarium")

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "logo"
            size: 64
            color: Theme.accent
        }
        AppText {
            width: parent.width
            text: qsTr("Ludarium")
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
        }
        AppText {
            width: parent.width
            text: qsTr("Version %1").arg(App.version)
            color: Theme.textSecondary
            horizontalAlignment: Text.AlignHCenter
        }
        AppText {
            width: parent.width
            text: qsTr("A library and launcher for collections of old games.")
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        AppButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Close")
            focus: true
            // The only one to press; its ring says so.
            onActiveFocusChanged: focusReason = Qt.TabFocusReason
            onClicked: about.close()
        }
    }
}
