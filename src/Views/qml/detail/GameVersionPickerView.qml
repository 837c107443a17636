import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The options, of which one is marked, and the two ways out.
FocusScope {
    id: picker

    readonly property alias marked: options.currentIndex
    property real listLimit: 360

    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Choose Version")
    Accessible.description: qsTr("Select which version of the game to launch")
    Keys.onEscapePressed: App.launch.versions.cancel()

    function begin() {
        options.currentIndex = -1;
        options.positionViewAtBeginning();
        options.forceActiveFocus(Qt.TabFocusReason);
    }
    function launch() {
        if (marked >= 0)
            App.launch.versions.launch(marked);
    }
    function mark(row: int) {
        options.currentIndex = Math.max(0, Math.min(options.count - 1, row));
    }

    Column {
        id: column

        width: parent.width
        spacing: Theme.space12

        AppText {
            width: parent.width
            text: qsTr("Choose Version")
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        AppText {
            width: parent.width
            text: qsTr("Select which version of the game to launch")
            color: Theme.textSecondary
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        ListView {
            id: options

            width: parent.width
            height: Math.min(contentHeight, picker.listLimit)
            model: App.launch.versions
            clip: true
            spacing: 2
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: true
            currentIndex: -1
            highlightMoveDuration: Theme.fast
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Versions")
            ScrollBar.vertical: AppScrollBar {}
            Keys.onUpPressed: picker.mark(picker.marked - 1)
            Keys.onDownPressed: picker.mark(picker.marked + 1)
            Keys.onReturnPressed: picker.launch()
            Keys.onEnterPressed: picker.launch()
            Keys.onSpacePressed: picker.mark(picker.marked < 0 ? 0 : picker.marked)
            Keys.onPressed: event => {
                if (event.key === Qt.Key_Home)
                    picker.mark(0);
                else if (event.key === Qt.Key_End)
                    picker.mark(count - 1);
                else
                    return;
                event.accepted = true;
            }

            delegate: VersionOptionRow {
                width: ListView.view.width
                marked: ListView.isCurrentItem
                onClicked: ListView.view.currentIndex = index
                onDoubleClicked: App.launch.versions.launch(index)
            }
        }
        Row {
            anchors.right: parent.right
            spacing: Theme.space8

            AppButton {
                text: qsTr("Cancel")
                onClicked: App.launch.versions.cancel()
            }
            AppButton {
                text: qsTr("Launch")
                primary: true
                iconName: "play"
                enabled: picker.marked >= 0
                onClicked: picker.launch()
            }
        }
    }
    FocusRing {
        parent: options
        visible: options.activeFocus && picker.marked < 0
        anchors.margins: 0
    }
}
