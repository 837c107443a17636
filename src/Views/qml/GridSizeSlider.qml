import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The four sizes of a grid cell.
Slider {
    id: slider

    readonly property var sizes: ["Small", "Medium", "Large", "Extra Large"]

    implicitWidth: Math.round(88 * Math.min(Theme.textScale, 1.5))
    implicitHeight: Theme.controlHeight
    from: 0
    to: 3
    stepSize: 1
    snapMode: Slider.SnapAlways
    value: sizes.indexOf(App.browse.gridSize)
    onMoved: App.browse.gridSize = sizes[Math.round(value)]
    // Dragged, it leaves the keyboard with the games.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: qsTr("Grid Size")
    Accessible.description: App.browse.gridSize

    Connections {
        target: App.browse
        function onViewSettingsChanged() {
            slider.value = slider.sizes.indexOf(App.browse.gridSize);
        }
    }
    AppToolTip {
        delay: slider.pressed ? 0 : 700
        visible: slider.hovered || slider.pressed
        text: qsTr("Grid Size: %1").arg(App.browse.gridSize)
    }
    background: Item {
        Rectangle {
            x: slider.leftPadding
            anchors.verticalCenter: parent.verticalCenter
            width: slider.availableWidth
            height: 4
            radius: 2
            color: Theme.border

            Rectangle {
                width: slider.visualPosition * parent.width
                height: parent.height
                radius: 2
                color: Theme.accent
            }
        }
        FocusRing {
            visible: slider.visualFocus
            anchors.margins: 0
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: (slider.height - height) / 2
        width: Math.round(14 * Math.min(Theme.textScale, 1.5))
        height: width
        radius: width / 2
        color: slider.pressed || slider.hovered ? Theme.accent : Theme.text
    }
}
