import QtQuick
import Ludarium

Row {
    id: control

    required property SettingItem setting

    spacing: Theme.space4

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, control.width - Theme.controlHeight - Theme.space4)
        text: control.setting.value
        color: Theme.textSecondary
        elide: Text.ElideMiddle
    }
    IconButton {
        iconName: "copy"
        text: qsTr("Copy %1").arg(control.setting.label)
        onClicked: App.copyText(control.setting.value)
    }
}
