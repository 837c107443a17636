import QtQuick
import Ludarium

// The user's own rating: one place for the keyboard, where arrows and digits change it and Delete takes it back.
FocusScope {
    id: stars

    property int value: 0
    property int hovered: 0
    readonly property int size: Math.round(22 * Theme.textScale)
    signal chosen(int rating)

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.focusable: true
    Accessible.name: value === 0 ? qsTr("Your rating: none") : qsTr("Your rating: %1 of 5").arg(value)
    Accessible.onIncreaseAction: choose(value + 1)
    Accessible.onDecreaseAction: choose(value - 1)

    function choose(rating: int) {
        if (rating >= 0 && rating <= 5)
            chosen(rating);
    }

    Keys.onRightPressed: choose(value + (row.mirrored ? -1 : 1))
    Keys.onLeftPressed: choose(value - (row.mirrored ? -1 : 1))
    Keys.onUpPressed: choose(value + 1)
    Keys.onDownPressed: choose(value - 1)
    Keys.onDeletePressed: choose(0)
    Keys.onDigit0Pressed: choose(0)
    Keys.onDigit1Pressed: choose(1)
    Keys.onDigit2Pressed: choose(2)
    Keys.onDigit3Pressed: choose(3)
    Keys.onDigit4Pressed: choose(4)
    Keys.onDigit5Pressed: choose(5)

    FocusRing {
        visible: stars.activeFocus
    }
    Row {
        id: row

        readonly property bool mirrored: LayoutMirroring.enabled

        Repeater {
            model: 5

            Item {
                id: star

                required property int index
                readonly property bool full: index < (stars.hovered > 0 ? stars.hovered : stars.value)

                width: stars.size + Theme.space4
                height: stars.size + Theme.space4

                AppIcon {
                    anchors.centerIn: parent
                    name: star.full ? "star.fill" : "star"
                    color: star.full ? Theme.warning : Theme.textSecondary
                    size: stars.size
                }
                MouseArea {
                    anchors.fill: parent
                    hoverEnabled: true
                    onContainsMouseChanged: {
                        if (containsMouse)
                            stars.hovered = star.index + 1;
                        else if (stars.hovered === star.index + 1)
                            stars.hovered = 0;
                    }
                    // The star that stands is taken back.
                    onClicked: stars.choose(stars.value === star.index + 1 ? 0 : star.index + 1)
                }
            }
        }
    }
}
