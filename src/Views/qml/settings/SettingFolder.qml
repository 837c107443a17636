import QtQuick
import Ludarium

Row {
    id: control

    required property SettingItem setting

    spacing: Theme.space8

    AppButton {
        iconName: "folder"
        text: qsTr("Choose...")
        Accessible.name: qsTr("Choose %1").arg(control.setting.label)
        onClicked: App.chooseCollection()
    }
    AppButton {
        text: qsTr("Show")
        enabled: control.setting.value !== ""
        Accessible.name: qsTr("Show in %1").arg(App.fileManagerName)
        onClicked: App.reveal(control.setting.value)
    }
}
