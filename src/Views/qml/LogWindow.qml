import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Ludarium

AppWindow {
    id: window

    width: 960
    height: 600
    minimumWidth: 560
    minimumHeight: 320
    title: qsTr("Logs")
    onVisibleChanged: {
        App.log.watching = visible;
        if (visible)
            lines.follow();
    }

    Shortcut {
        sequences: ["Ctrl+F"]
        onActivated: search.forceActiveFocus()
    }
    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: window.close()
    }

    ColumnLayout {
        anchors.fill: parent
        Keys.onEscapePressed: window.close()
        spacing: 0

        RowLayout {
            Layout.margins: Theme.space12
            spacing: Theme.space8

            SearchField {
                id: search

                Layout.fillWidth: true
                Layout.maximumWidth: 360
                placeholderText: qsTr("Search the log")
                onTextChanged: App.log.filter = text
                onAbandoned: lines.forceActiveFocus()
            }
            AppText {
                Layout.fillWidth: true
                text: App.log.count === 1 ? qsTr("1 line") : qsTr("%L1 lines").arg(App.log.count)
                color: Theme.textSecondary
            }
            CheckBox {
                id: followBox

                text: qsTr("Follow")
                checked: true
                font.pixelSize: Theme.textBody
                Accessible.name: text
                Keys.onReturnPressed: flip()
                Keys.onEnterPressed: flip()
                function flip() {
                    toggle();
                    toggled();
                }
                indicator: Rectangle {
                    y: (parent.height - height) / 2
                    implicitWidth: 18
                    implicitHeight: 18
                    radius: Theme.radiusSmall
                    color: followBox.checked ? Theme.accent : Theme.surface
                    border.width: followBox.checked ? 0 : 1
                    border.color: Theme.border

                    AppIcon {
                        anchors.centerIn: parent
                        visible: followBox.checked
                        name: "check"
                        size: 14
                        color: Theme.accentText
                    }
                    FocusRing {
                        visible: followBox.visualFocus
                    }
                }
                contentItem: AppText {
                    leftPadding: followBox.indicator.width + Theme.space8
                    text: followBox.text
                    verticalAlignment: Text.AlignVCenter
                }
                onToggled: lines.follow()
            }
            AppButton {
                iconName: "copy"
                text: qsTr("Copy")
                onClicked: App.log.copyAll()
            }
            HintArea {
                reason: App.logUpload.unavailable

                AppButton {
                    text: qsTr("Upload...")
                    enabled: !App.logUpload.unavailable
                    Accessible.description: App.logUpload.unavailable
                    onClicked: App.logUpload.upload()
                }
            }
            AppButton {
                iconName: "trash"
                text: qsTr("Clear")
                onClicked: App.log.clear()
            }
        }
        ListView {
            id: lines

            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: App.log
            boundsBehavior: Flickable.StopAtBounds
            reuseItems: true
            activeFocusOnTab: true
            currentIndex: -1
            keyNavigationEnabled: false
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Log lines")
            ScrollBar.vertical: AppScrollBar {}
            onCountChanged: follow()

            Timer {
                id: atEnd

                interval: 0
                onTriggered: lines.positionViewAtEnd()
            }
            function scroll(by: real) {
                contentY = Math.max(originY, Math.min(originY + contentHeight - height, contentY + by));
            }
            Keys.onUpPressed: scroll(-Theme.rowHeight)
            Keys.onDownPressed: scroll(Theme.rowHeight)
            Keys.onPressed: event => {
                event.accepted = true;
                if (event.key === Qt.Key_PageUp)
                    scroll(-height);
                else if (event.key === Qt.Key_PageDown)
                    scroll(height);
                else if (event.key === Qt.Key_Home)
                    positionViewAtBeginning();
                else if (event.key === Qt.Key_End)
                    positionViewAtEnd();
                else
                    event.accepted = false;
            }
            FocusRing {
                parent: lines
                visible: lines.activeFocus
                anchors.margins: 2
            }
            function follow() {
                if (followBox.checked)
                    atEnd.restart();
            }

            delegate: AppText {
                required property string line
                required property string level

                width: ListView.view.width
                leftPadding: Theme.space12
                rightPadding: Theme.space12
                topPadding: 1
                bottomPadding: 1
                text: line
                wrapMode: Text.WrapAnywhere
                elide: Text.ElideNone
                font.family: App.appearance.fixedFamily
                font.pixelSize: Theme.textSmall
                Accessible.role: Accessible.ListItem
                Accessible.name: line
                color: level === "error" ? Theme.danger : level === "warn" ? Theme.warning : level === "debug" ? Theme.textSecondary : Theme.text
            }
        }
    }
    ToastArea {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.space16
    }
}
