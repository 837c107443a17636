import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One picture of the gallery, fitted to the window or at its own size.
FocusScope {
    id: page

    required property int index
    required property int count
    property bool fitted: true
    readonly property string source: App.detail.media.sourceAt(index)
    readonly property string name: App.detail.media.nameAt(index)
    signal stepped(int by)
    signal jumped(int to)
    signal closed

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("%1, %L2 of %L3").arg(name).arg(index + 1).arg(count)
    Keys.onLeftPressed: stepped(LayoutMirroring.enabled ? 1 : -1)
    Keys.onRightPressed: stepped(LayoutMirroring.enabled ? -1 : 1)
    Keys.onUpPressed: stepped(-1)
    Keys.onDownPressed: stepped(1)
    Keys.onSpacePressed: fitted = !fitted
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            jumped(0);
        else if (event.key === Qt.Key_End)
            jumped(count - 1);
        else
            return;
        event.accepted = true;
    }
    onIndexChanged: fitted = true

    Flickable {
        id: view

        anchors.fill: parent
        contentWidth: Math.max(width, picture.width)
        contentHeight: Math.max(height, picture.height)
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        ScrollBar.vertical: AppScrollBar {}
        ScrollBar.horizontal: AppScrollBar {}

        Image {
            id: picture

            // Small pictures of old games grow too, but not into a blur.
            readonly property real fit: Math.min(3, (page.width - 2 * Theme.space24) / Math.max(1, sourceSize.width), (page.height - 2 * bar.height) / Math.max(1, sourceSize.height))

            anchors.centerIn: parent
            width: Math.round(sourceSize.width * (page.fitted ? fit : 1))
            height: Math.round(sourceSize.height * (page.fitted ? fit : 1))
            asynchronous: true
            source: page.source
            fillMode: Image.PreserveAspectFit
            Accessible.ignored: true
        }
        TapHandler {
            onTapped: page.fitted = !page.fitted
        }
    }
    Rectangle {
        id: bar

        width: parent.width
        height: Theme.controlHeight + 2 * Theme.space8
        color: Theme.viewer

        AppText {
            anchors.left: parent.left
            anchors.leftMargin: Theme.space16
            anchors.right: buttons.left
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("%1 (%L2 of %L3)").arg(page.name).arg(page.index + 1).arg(page.count)
            color: Theme.coverText
            Accessible.ignored: true
        }
        Row {
            id: buttons

            anchors.right: parent.right
            anchors.rightMargin: Theme.space8
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.space4

            IconButton {
                iconName: "previous"
                text: qsTr("Previous picture")
                enabled: page.index > 0
                onClicked: page.stepped(-1)
            }
            IconButton {
                iconName: "next"
                text: qsTr("Next picture")
                enabled: page.index < page.count - 1
                onClicked: page.stepped(1)
            }
            IconButton {
                iconName: "search"
                text: page.fitted ? qsTr("Show at full size") : qsTr("Fit to window")
                onClicked: page.fitted = !page.fitted
            }
            IconButton {
                iconName: "close"
                text: qsTr("Close")
                onClicked: page.closed()
            }
        }
    }
}
