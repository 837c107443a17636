import QtQuick
import Ludarium

AppTextField {
    id: control

    required property SettingItem setting

    label: control.setting.label
    Accessible.description: control.setting.help
    placeholderText: control.setting.defaultText
    text: control.setting.value
    onEditingFinished: {
        control.setting.value = text;
        text = Qt.binding(() => control.setting.value);
    }
}
