import QtQuick
import QtQuick.Layouts
import Ludarium

AppWindow {
    id: window

    property string tab: "General"
    readonly property alias navigation: navigation
    readonly property SettingsPage page: settingsPage

    width: 900
    height: 660
    minimumWidth: 560
    minimumHeight: 400
    title: qsTr("Settings")

    function jumpToKey(key: string) {
        const item = App.settings.item(key);
        if (item)
            jumpTo(item);
    }
    function jumpTo(item: SettingItem) {
        tab = item.tab;
        // Rows have their places only after the page was laid out.
        later.key = item.key;
        later.restart();
    }

    Timer {
        id: later

        property string key

        interval: 0
        onTriggered: window.page.reveal(key)
    }
    Shortcut {
        sequences: ["Ctrl+F"]
        onActivated: navigation.searchField.forceActiveFocus()
    }
    Shortcut {
        sequences: ["Ctrl+W"]
        enabled: !window.covered
        onActivated: window.close()
    }

    // What lies over it is answered first.
    onClosing: close => close.accepted = !covered

    RowLayout {
        anchors.fill: parent
        spacing: 0
        // What the focused control has no use for.
        Keys.onEscapePressed: window.close()

        SettingsNavigation {
            id: navigation

            Layout.fillHeight: true
            Layout.preferredWidth: Math.round(200 * Math.min(Theme.textScale, 1.7))
            focus: true
            tab: window.tab
            onTabWanted: name => window.tab = name
            onItemWanted: item => window.jumpTo(item)
        }
        SettingsPage {
            id: settingsPage

            Layout.fillWidth: true
            Layout.fillHeight: true
            tab: window.tab
        }
    }
    ToastArea {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.space16
    }
}
