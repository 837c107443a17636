pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import Ludarium

Column {
    id: list

    property string highlighted
    property bool brief: false

    spacing: Theme.space8

    function rowOf(key: string): Item {
        for (let i = 0; i < rows.count; ++i) {
            const row = rows.itemAt(i) as EmulatorRow;
            if (row && row.settingKey === key)
                return row;
        }
        return null;
    }

    SettingSectionHead {
        visible: !list.brief
        text: qsTr("Emulators")
    }
    Repeater {
        id: rows

        model: list.visible ? App.emulators : null

        EmulatorRow {
            onChooserWanted: {
                chooser.row = index;
                chooser.open();
            }
            width: list.width
            brief: list.brief
            highlighted: list.highlighted === settingKey
        }
    }
    Row {
        spacing: Theme.space12

        AppButton {
            iconName: "refresh"
            text: qsTr("Check Again")
            enabled: !App.emulators.checking
            onClicked: App.emulators.check()
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: App.emulators.checking ? qsTr("Looking...") : qsTr("%L1 of %L2 found").arg(App.emulators.foundCount).arg(rows.count)
            color: Theme.textSecondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    FileDialog {
        id: chooser

        property int row: -1

        title: qsTr("Choose the program")
        onAccepted: App.emulators.setPath(row, selectedFile)
    }
    Component.onCompleted: {
        if (visible)
            App.emulators.check();
    }
    onVisibleChanged: {
        if (visible)
            App.emulators.check();
    }
}
