import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Sheet {
    id: about

    wantedWidth: 340
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
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
