import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Ludarium

// A window in the theme's colours, also where the controls draw something themselves, such as a tooltip.
ApplicationWindow {
    id: window

    readonly property Item ground: T.Overlay.overlay
    // Whether something lies over the window that has to be answered or left first.
    readonly property bool covered: {
        for (let i = 0; i < (ground?.children.length ?? 0); ++i)
            if (ground.children[i] instanceof Scrim)
                return true;
        return false;
    }

    color: Theme.window
    palette {
        window: Theme.surface
        windowText: Theme.text
        base: Theme.surface
        alternateBase: Theme.raised
        text: Theme.text
        placeholderText: Theme.textSecondary
        button: Theme.raised
        buttonText: Theme.text
        brightText: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentText
        toolTipBase: Theme.surface
        toolTipText: Theme.text
        link: Theme.accent
        light: Theme.hover
        midlight: Theme.hover
        mid: Theme.border
        dark: Theme.border
        shadow: Theme.border
    }
}
