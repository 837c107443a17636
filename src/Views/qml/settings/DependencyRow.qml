import QtQuick
import Ludarium

Item {
    id: row

    required property string name
    required property string purpose
    required property bool required
    required property bool installed
    required property string detail

    readonly property bool known: App.dependencies.checked

    implicitHeight: texts.implicitHeight + 2 * Theme.space8
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2").arg(name).arg(stateText.text)
    Accessible.description: purpose

    AppIcon {
        id: symbol

        anchors.verticalCenter: parent.verticalCenter
        name: row.installed ? "check" : row.required ? "warning" : "close"
        color: !row.known ? Theme.textSecondary : row.installed ? Theme.success : row.required ? Theme.warning : Theme.textSecondary
    }
    Column {
        id: texts

        anchors.left: symbol.right
        anchors.leftMargin: Theme.space12
        anchors.right: stateText.left
        anchors.rightMargin: Theme.space12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Row {
            spacing: Theme.space8

            AppText {
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            Chip {
                anchors.verticalCenter: parent.verticalCenter
                visible: row.required
                text: qsTr("Required")
            }
        }
        AppText {
            width: parent.width
            text: row.purpose
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
    AppText {
        id: stateText

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: !row.known ? qsTr("Looking...") : row.detail !== "" ? row.detail : row.installed ? qsTr("Installed") : qsTr("Not found")
        color: row.installed || !row.known ? Theme.textSecondary : Theme.text
        font.pixelSize: Theme.textSmall
        Accessible.ignored: true
    }
}
