import QtQuick
import Ludarium

// The control of one setting, after its kind.
Loader {
    id: loader

    required property SettingItem setting

    readonly property var files: ({
            "flag": "SettingFlag.qml",
            "choice": "SettingChoice.qml",
            "text": "SettingLine.qml",
            "folder": "SettingFolder.qml",
            "action": "SettingAction.qml",
            "info": "SettingInfo.qml"
        })

    Component.onCompleted: setSource(files[setting.kind], {
        "setting": setting
    })
}
