import QtQuick
import QtQuick.Window
import Ludarium

// What stands behind the game, fading into the pane, with its cover and its logo in front.
Item {
    id: header

    readonly property string backdrop: App.detail.media.fanArt
    signal closed

    implicitHeight: 224
    clip: true

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.coverColor(App.detail.hue)
            }
            GradientStop {
                position: 1
                color: Theme.surface
            }
        }
    }
    Image {
        id: picture

        anchors.fill: parent
        asynchronous: true
        source: header.backdrop
        sourceSize.width: 800
        sourceSize.height: 800
        fillMode: Image.PreserveAspectCrop
        opacity: status === Image.Ready && header.backdrop !== "" ? 0.75 : 0
        Accessible.ignored: true

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.slow
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0.25
                color: Theme.transparent
            }
            GradientStop {
                position: 1
                color: Theme.surface
            }
        }
    }
    CoverArt {
        id: cover

        anchors.left: parent.left
        anchors.leftMargin: Theme.space16
        anchors.bottom: parent.bottom
        width: 126
        height: 168
        source: App.detail.cover
        requestWidth: Math.round(width * Screen.devicePixelRatio)
        initials: App.detail.initials
        hue: App.detail.hue
    }
    Image {
        anchors.left: cover.right
        anchors.leftMargin: Theme.space16
        anchors.right: parent.right
        anchors.rightMargin: Theme.space16
        anchors.bottom: parent.bottom
        height: 84
        asynchronous: true
        source: App.detail.media.logo
        sourceSize.width: 2 * 280
        sourceSize.height: 2 * 84
        fillMode: Image.PreserveAspectFit
        horizontalAlignment: Image.AlignLeft
        verticalAlignment: Image.AlignBottom
        Accessible.ignored: true
    }
    IconButton {
        id: closer

        anchors.top: parent.top
        anchors.right: parent.right
        anchors.margins: Theme.space8
        iconName: "close"
        text: qsTr("Hide Details")
        onClicked: header.closed()

        // Seen on any picture.
        Rectangle {
            anchors.fill: parent
            z: -1
            radius: Theme.radius
            color: Theme.surface
            opacity: closer.hovered ? 0.9 : 0.6
        }
    }
}
