pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One of several texts: `chosen` is the one that holds, `picked` tells of another.
ComboBox {
    id: control

    property string label
    property string chosen
    signal picked(string choice)

    function place(): int {
        return model ? model.indexOf(chosen) : -1;
    }
    currentIndex: place()
    onActivated: index => {
        picked(model[index]);
        // Whatever holds now: a choice that could not be kept goes back.
        currentIndex = Qt.binding(place);
    }

    implicitWidth: Math.round(210 * Math.min(Theme.textScale, 1.6))
    implicitHeight: Theme.controlHeight
    font.pixelSize: Theme.textBody
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: label === "" ? displayText : qsTr("%1: %2").arg(label).arg(displayText)

    contentItem: AppText {
        leftPadding: Theme.space12
        rightPadding: Theme.space4
        text: control.displayText
        font: control.font
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    indicator: AppIcon {
        x: control.width - width - Theme.space8
        anchors.verticalCenter: control.verticalCenter
        name: "down"
        size: Math.round(14 * Theme.textScale)
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.hovered || control.down ? Theme.hover : Theme.raised
        border.width: 1
        border.color: Theme.border

        FocusRing {
            visible: control.visualFocus
        }
    }
    delegate: ItemDelegate {
        id: entry

        required property string modelData
        required property int index

        width: ListView.view ? ListView.view.width : 0
        height: Theme.rowHeight
        padding: 0
        highlighted: control.highlightedIndex === index
        Accessible.name: modelData

        contentItem: AppText {
            leftPadding: Theme.space12
            rightPadding: Theme.space8
            text: entry.modelData
            font.weight: control.currentIndex === entry.index ? Font.DemiBold : Font.Normal
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Rectangle {
            radius: Theme.radiusSmall
            color: entry.highlighted ? Theme.hover : Theme.transparent
        }
    }
    popup: Popup {
        y: control.height + 2
        width: control.width
        implicitHeight: Math.min(contentItem.implicitHeight + 2 * padding, 320)
        padding: Theme.space4

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.popup.visible ? control.delegateModel : null
            currentIndex: control.highlightedIndex
            ScrollBar.vertical: AppScrollBar {}
        }
        background: Rectangle {
            radius: Theme.radius
            color: Theme.surface
            border.width: 1
            border.color: Theme.border
        }
    }
}
