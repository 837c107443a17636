pragma ComponentBehavior: Bound
import QtQuick
import Ludarium

// The tools that collections need, and the line that installs what is missing.
Column {
    id: list

    spacing: Theme.space8

    Repeater {
        id: rows

        model: App.dependencies

        DependencyRow {
            width: list.width
        }
    }
    AppText {
        width: parent.width
        topPadding: Theme.space8
        visible: App.dependencies.checked
        text: App.dependencies.command !== "" ? qsTr("Run this in a terminal to install what is missing, then check again:") : App.dependencies.complete ? qsTr("Everything is there.") : qsTr("Install what is missing with the package manager of this system, then check again.")
        color: Theme.textSecondary
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    CommandLine {
        width: parent.width
        visible: App.dependencies.command !== ""
        command: App.dependencies.command
    }
    AppButton {
        iconName: "refresh"
        text: qsTr("Check Again")
        enabled: !App.dependencies.checking
        onClicked: App.dependencies.check()
    }
    Component.onCompleted: {
        if (visible)
            App.dependencies.check();
    }
    onVisibleChanged: {
        if (visible)
            App.dependencies.check();
    }
}
