import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// One page of the assistant: its title, a word about it, and what it shows.
Flickable {
    id: page

    required property string step

    readonly property var texts: ({
            "Welcome": [qsTr("Welcome to Ludarium"), qsTr("A library and launcher for collections of old games. This assistant looks at what is on your computer and tells what is missing. Nothing is installed without you, and everything can be looked at again in Settings.")],
            "Dependencies": [qsTr("Dependencies"), qsTr("Tools that collections and their scripts use. Only the one marked as required is needed to install the others.")],
            "Emulators": [qsTr("Emulators"), qsTr("The programs that play the games. DOSBox and ScummVM play most collections; the others are needed for some platforms only.")],
            "MT-32 Audio": [qsTr("MT-32 Audio"), ""],
            "Complete": [qsTr("Ready to play"), qsTr("Next, select the folder of your collection: Library, Select Collection Folder... Whatever is missing can be installed at any time; Settings shows it under Dependencies and Emulators.")]
        })

    contentHeight: column.implicitHeight
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    onStepChanged: contentY = 0
    ScrollBar.vertical: AppScrollBar {}

    // The first and the last page say only a word, in their middle.
    readonly property bool plain: step === "Welcome" || step === "Complete"

    Column {
        id: column

        y: page.plain ? Math.max(0, (page.height - implicitHeight) / 2) : 0
        width: page.width - Theme.space12
        spacing: Theme.space16

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: page.plain
            name: page.step === "Complete" ? "check" : "logo"
            size: 64
            color: page.step === "Complete" ? Theme.success : Theme.accent
        }
        AppText {
            width: parent.width
            text: page.texts[page.step][0]
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            horizontalAlignment: page.plain ? Text.AlignHCenter : Text.AlignLeft
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        AppText {
            width: parent.width
            visible: text !== ""
            text: page.texts[page.step][1]
            color: Theme.textSecondary
            horizontalAlignment: page.plain ? Text.AlignHCenter : Text.AlignLeft
            wrapMode: Text.Wrap
            lineHeight: 1.25
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Loader {
            width: parent.width
            visible: item !== null
            sourceComponent: page.step === "Dependencies" ? dependencies : page.step === "Emulators" ? emulators : page.step === "MT-32 Audio" ? mt32 : null
        }
    }
    Component {
        id: dependencies

        DependencyList {}
    }
    Component {
        id: emulators

        EmulatorList {
            brief: true
        }
    }
    Component {
        id: mt32

        Mt32Panel {
            Component.onCompleted: {
                if (!App.dependencies.checked)
                    App.dependencies.check();
            }
        }
    }
}
