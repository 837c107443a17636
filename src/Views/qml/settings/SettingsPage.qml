pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The settings of one tab, under each other.
Flickable {
    id: page

    required property string tab
    property string highlighted
    readonly property string missing: App.settings.missingText(tab)

    contentHeight: column.implicitHeight + 2 * Theme.space24
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: AppScrollBar {}

    // The row that was searched for; it stays in view while rows above it get their heights.
    property Item target: null

    // Scrolls to a setting and marks it.
    function reveal(key: string) {
        highlighted = key;
        target = key === "dependency:mt32" ? mt32 : emulators.rowOf(key);
        for (let i = 0; i < rows.count; ++i) {
            const part = rows.itemAt(i) as SettingPart;
            if (part && part.modelData.key === key)
                target = part;
        }
        place();
    }
    function place() {
        const top = target ? target.mapToItem(column, 0, 0).y : 0;
        contentY = Math.max(0, Math.min(top - Theme.space24, contentHeight - height));
    }
    onContentHeightChanged: {
        if (target)
            place();
    }
    onMovementStarted: target = null
    onTabChanged: {
        highlighted = "";
        target = null;
        contentY = 0;
    }

    Column {
        id: column

        x: Theme.space24
        y: Theme.space16
        width: Math.min(page.width - 2 * Theme.space24, 760 * Theme.textScale)

        AppText {
            bottomPadding: Theme.space4
            text: page.tab
            font.pixelSize: Theme.textHeadline
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        MissingPart {
            width: parent.width
            visible: page.missing !== ""
            text: page.missing
        }
        Repeater {
            id: rows

            model: App.settings.itemsOf(page.tab)

            SettingPart {
                width: column.width
                highlighted: page.highlighted === modelData.key
            }
        }
        EmulatorList {
            id: emulators

            width: parent.width
            visible: page.tab === "Emulators"
            highlighted: page.highlighted
        }
        DependencyList {
            x: Theme.space12
            width: parent.width - 2 * Theme.space12
            visible: page.tab === "Dependencies"
        }
        SettingSectionHead {
            id: mt32

            visible: page.tab === "Dependencies"
            text: qsTr("MT-32 Audio")
        }
        Mt32Panel {
            x: Theme.space12
            width: parent.width - 2 * Theme.space12
            visible: page.tab === "Dependencies"
        }
    }
}
