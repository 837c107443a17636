import QtQuick
import Ludarium

Item {
    id: heading

    required property string section

    width: ListView.view ? ListView.view.width : 0
    height: label.implicitHeight + Theme.space16 + Theme.space4

    AppText {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Theme.space16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.space4
        text: heading.section
        color: Theme.textSecondary
        font.pixelSize: Theme.textCaption
        font.weight: Font.DemiBold
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 0.6
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
