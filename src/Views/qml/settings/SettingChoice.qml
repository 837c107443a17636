import QtQuick
import Ludarium

AppComboBox {
    id: control

    required property SettingItem setting

    label: control.setting.label
    Accessible.description: control.setting.help
    model: control.setting.choices
    chosen: control.setting.value
    onPicked: choice => control.setting.value = choice
}
