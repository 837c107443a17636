import QtQuick
import Ludarium

Rectangle {
    id: splash

    color: Theme.window
    opacity: App.start.visible ? 1 : 0
    visible: opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: App.appearance.reducedMotion ? 0 : 500
            easing.type: Easing.OutCubic
        }
    }
    // Nothing below takes a click while the splash is up.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }
    Column {
        anchors.centerIn: parent
        width: Math.min(360, parent.width - 2 * Theme.space24)
        spacing: Theme.space16

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "logo"
            size: 88
            color: Theme.accent
        }
        AppText {
            width: parent.width
            text: qsTr("Ludarium")
            font.pixelSize: Theme.textLarge
            font.weight: Font.DemiBold
            font.letterSpacing: 1
            horizontalAlignment: Text.AlignHCenter
        }
        ProgressLine {
            width: parent.width
            value: App.library.progress
            opacity: App.library.loading ? 1 : 0
        }
        AppText {
            width: parent.width
            text: App.library.loading ? App.library.step : " "
            color: Theme.textSecondary
            font.pixelSize: Theme.textSmall
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            height: implicitHeight
            maximumLineCount: 3
        }
    }
}
