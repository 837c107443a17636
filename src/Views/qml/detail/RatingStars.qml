import QtQuick
import Ludarium

// The user's own rating: one place for the keyboard, where arrows and digits change it and Delete takes it back.
FocusScope {
    id: stars

    property int value: 0
    property int hovered: 0
    readonly property int shown: hovered > 0 ? hovered : value
    signal chosen(int rating)

    implicitWidth: row.implicitWidth
    implicitHeight: Theme.controlHeight
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

        anchors.verticalCenter: parent.verticalCenter

        Repeater {
            model: 5

            RatingStar {
                readonly property RatingStars stars: parent ? parent.parent as RatingStars : null

                lit: stars ? stars.shown : 0
                onEntered: stars.hovered = index + 1
                onExited: {
                    if (stars.hovered === index + 1)
                        stars.hovered = 0;
                }
                // The star that stands is taken back.
                onPressed: stars.choose(stars.value === index + 1 ? 0 : index + 1)
            }
        }
    }
}
