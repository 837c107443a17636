import QtQuick
import QtQuick.Layouts
import Ludarium

// One setting: what it is called, what it does, and its control; under each other where there is little room.
Rectangle {
    id: row

    required property SettingItem modelData
    property bool highlighted: false
    readonly property string settingKey: modelData.key
    readonly property bool wide: width > 420 * Theme.textScale
    // A switch is small enough to stand beside its text in any width.
    readonly property bool beside: wide || modelData.kind === "flag"
    readonly property bool brief: modelData.kind === "info"

    implicitHeight: grid.implicitHeight + 2 * (brief ? Theme.space4 : Theme.space12)
    radius: Theme.radius
    color: highlighted ? Theme.selection : Theme.transparent
    border.width: highlighted ? 1 : 0
    border.color: Theme.accent

    GridLayout {
        id: grid

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: Theme.space12
        anchors.verticalCenter: parent.verticalCenter
        columns: row.beside ? 2 : 1
        columnSpacing: Theme.space24
        rowSpacing: Theme.space8

        Column {
            Layout.fillWidth: !row.brief || !row.beside
            Layout.preferredWidth: row.brief ? Math.round(110 * Theme.textScale) : -1
            Layout.alignment: Qt.AlignVCenter
            spacing: Theme.space4

            AppText {
                width: parent.width
                text: row.modelData.label
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            AppText {
                width: parent.width
                visible: row.modelData.kind === "folder"
                text: row.modelData.kind === "folder" && row.modelData.value !== "" ? row.modelData.value : qsTr("No folder is open")
                color: Theme.text
                font.pixelSize: Theme.textSmall
                wrapMode: Text.WrapAnywhere
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            AppText {
                width: parent.width
                visible: text !== ""
                text: row.modelData.help + (row.modelData.defaultText === "" ? "" : " " + qsTr("Default: %1.").arg(row.modelData.defaultText))
                color: row.highlighted ? Theme.text : Theme.textSecondary
                font.pixelSize: Theme.textSmall
                wrapMode: Text.Wrap
                lineHeight: 1.15
                Accessible.ignored: true
            }
        }
        SettingControl {
            Layout.alignment: row.beside && !row.brief ? Qt.AlignRight | Qt.AlignVCenter : Qt.AlignLeft | Qt.AlignVCenter
            Layout.fillWidth: row.brief
            setting: row.modelData
        }
    }
}
