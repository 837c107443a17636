import QtQuick
import Ludarium

// The assistant of a first run. Only its last button ends it.
Sheet {
    id: sheet

    readonly property var steps: ["Welcome", "Dependencies", "Emulators", "MT-32 Audio", "Complete"]
    property int step: 0

    wantedWidth: 700 * Math.min(Theme.textScale, 1.4)
    height: Math.min(580 * Math.min(Theme.textScale, 1.4), (parent ? parent.height : 600) - 2 * Theme.space24)

    function begin() {
        step = 0;
        open();
    }
    function goOn() {
        if (step < steps.length - 1) {
            step += 1;
            return;
        }
        App.start.completeFirstRun();
        close();
    }
    function focusNext() {
        (contentItem as FirstRunContent).focusNext();
    }

    contentItem: FirstRunContent {
        steps: sheet.steps
        step: sheet.step
        onBack: sheet.step = Math.max(0, sheet.step - 1)
        onNext: sheet.goOn()
    }
    onOpened: focusNext()
    onStepChanged: focusNext()
}
