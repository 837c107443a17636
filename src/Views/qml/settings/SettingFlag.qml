import QtQuick
import Ludarium

AppSwitch {
    id: control

    required property SettingItem setting

    text: control.setting.label
    Accessible.description: control.setting.help
    checked: control.setting.value
    onToggled: {
        control.setting.value = checked;
        // Whatever holds now: a value that could not be kept goes back.
        checked = Qt.binding(() => control.setting.value);
    }
}
