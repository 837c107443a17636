import QtQuick
import Ludarium

AppButton {
    id: control

    required property SettingItem setting

    text: control.setting.choices[0]
    Accessible.description: control.setting.help
    onClicked: control.setting.activate()
}
