pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Ludarium

// The tabs, or what a search finds in all of them.
FocusScope {
    id: navigation

    required property string tab
    readonly property bool searching: search.text.trim() !== ""
    readonly property var tabs: App.settings.tabs
    readonly property alias searchField: search

    signal tabWanted(string name)
    signal itemWanted(SettingItem item)

    function choose(index: int) {
        if (index < 0 || index >= list.count)
            return;
        if (searching)
            itemWanted(list.model[index] as SettingItem);
        else
            tabWanted(list.model[index]);
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.sidebar
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: Theme.space12
        spacing: Theme.space8

        SearchField {
            id: search

            Layout.fillWidth: true
            Layout.leftMargin: Theme.space12
            Layout.rightMargin: Theme.space12
            placeholderText: qsTr("Search")
            Accessible.name: qsTr("Search settings")
            onAbandoned: list.forceActiveFocus()
            onAccepted: navigation.choose(Math.max(0, list.currentIndex))
            onTextChanged: list.currentIndex = navigation.searching ? 0 : navigation.tabs.indexOf(navigation.tab)
            Keys.onDownPressed: {
                list.forceActiveFocus();
                list.currentIndex = Math.max(0, list.currentIndex);
            }
        }
        AppText {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.space16
            Layout.rightMargin: Theme.space12
            visible: navigation.searching && list.count === 0
            text: qsTr("No setting is called so")
            color: Theme.textSecondary
            wrapMode: Text.Wrap
        }
        ListView {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            focus: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            model: navigation.searching ? App.settings.search(search.text) : navigation.tabs
            currentIndex: navigation.tabs.indexOf(navigation.tab)
            Accessible.role: Accessible.List
            Accessible.name: navigation.searching ? qsTr("Found settings") : qsTr("Tabs")
            ScrollBar.vertical: AppScrollBar {}
            Keys.onUpPressed: move(-1)
            Keys.onDownPressed: move(1)
            Keys.onReturnPressed: navigation.choose(currentIndex)
            Keys.onEnterPressed: navigation.choose(currentIndex)

            function move(by: int) {
                currentIndex = Math.max(0, Math.min(count - 1, currentIndex + by));
                if (!navigation.searching)
                    navigation.choose(currentIndex);
            }

            delegate: SettingsNavigationRow {
                onClicked: {
                    list.currentIndex = index;
                    list.forceActiveFocus();
                    navigation.choose(index);
                }
            }
        }
    }
}
