import QtQuick
import Ludarium

// One emulator: whether it was found, where, which version, and the user's own choice of a path.
Rectangle {
    id: row

    required property int index
    required property string name
    required property string status
    required property string path
    required property string version
    required property bool settable
    required property string customPath
    required property string command
    property bool highlighted: false
    // Only the state, for the assistant.
    property bool brief: false
    readonly property string settingKey: "emulator:" + name
    signal chooserWanted

    readonly property bool found: status === "installed"

    implicitHeight: column.implicitHeight + 2 * Theme.space12
    radius: Theme.radius
    color: highlighted ? Theme.selection : Theme.raised
    border.width: highlighted ? 1 : 0
    border.color: Theme.accent
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("%1, %2").arg(name).arg(stateText.text)

    Column {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: Theme.space12
        anchors.rightMargin: Theme.space12
        spacing: Theme.space8

        Row {
            width: parent.width
            spacing: Theme.space8

            AppIcon {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                name: row.found ? "check" : "close"
                color: row.found ? Theme.success : Theme.textSecondary
            }
            AppText {
                id: nameText

                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            AppText {
                id: stateText

                anchors.verticalCenter: parent.verticalCenter
                width: Math.max(0, parent.width - symbol.width - nameText.width - 2 * Theme.space8)
                text: row.found ? (row.version === "" ? qsTr("Installed") : row.version) : row.status === "notInstalled" ? qsTr("Not found") : qsTr("Looking...")
                color: row.highlighted ? Theme.text : Theme.textSecondary
                font.pixelSize: Theme.textSmall
                Accessible.ignored: true
            }
        }
        AppText {
            width: parent.width
            visible: row.found && !row.brief
            text: row.path
            color: row.highlighted ? Theme.text : Theme.textSecondary
            font.pixelSize: Theme.textSmall
            wrapMode: Text.WrapAnywhere
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        AppText {
            width: parent.width
            visible: !row.brief && row.customPath !== "" && row.customPath !== row.path && row.status !== "unknown"
            text: qsTr("The chosen path is not used, there is no such file: %1").arg(row.customPath)
            color: Theme.warning
            font.pixelSize: Theme.textSmall
            wrapMode: Text.WrapAnywhere
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        CommandLine {
            width: parent.width
            visible: row.status === "notInstalled" && row.command !== ""
            command: row.command
        }
        Flow {
            width: parent.width
            visible: row.settable && !row.brief
            spacing: Theme.space8

            AppButton {
                text: qsTr("Choose...")
                iconName: "folder"
                Accessible.name: qsTr("Choose the path of %1").arg(row.name)
                onClicked: row.chooserWanted()
            }
            AppButton {
                text: qsTr("Search the usual places")
                Accessible.description: row.customPath === "" ? qsTr("No path is chosen") : qsTr("Forgets %1").arg(row.customPath)
                onClicked: App.emulators.searchUsualPlaces(row.index)
            }
        }
    }
}
