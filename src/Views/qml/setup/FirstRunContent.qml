import QtQuick
import QtQuick.Layouts
import Ludarium

FocusScope {
    id: content

    required property var steps
    required property int step

    signal back
    signal next

    function focusNext() {
        nextButton.takeFocus();
    }

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("First-run assistant, step %1 of %2: %3").arg(step + 1).arg(steps.length).arg(steps[step])
    Keys.onEscapePressed: back()

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.space16

        SetupSteps {
            Layout.fillWidth: true
            steps: content.steps
            current: content.step
        }
        SetupPage {
            id: page

            Layout.fillWidth: true
            Layout.fillHeight: true
            step: content.steps[content.step]
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.space8

            AppButton {
                visible: content.step > 0
                text: qsTr("Back")
                onClicked: content.back()
            }
            Item {
                Layout.fillWidth: true
            }
            AppButton {
                id: nextButton

                primary: true
                focus: true
                text: content.step === 0 ? qsTr("Get Started") : content.step === content.steps.length - 1 ? qsTr("Finish Setup") : qsTr("Continue")
                onClicked: content.next()
            }
        }
    }
}
