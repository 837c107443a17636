pragma Singleton
import QtQuick
import Ludarium

// Every token of the look: colour, spacing, radius, type and motion. No other file holds a literal colour.
QtObject {
    id: theme

    // Order of the swatches: window, sidebar, surface, raised, hover, border, text, second text, accent, text on accent, selection,
    // danger, warning, success.
    readonly property var palettes: ({
            "System Dark": ["#16181d", "#1b1e24", "#1f232a", "#272c35", "#2e343f", "#343b46", "#eceef2", "#a4adbb", "#6aa3ff", "#0b1524", "#2a3f60", "#ff8f86", "#f0bd60", "#6fd093"],
            "System Light": ["#f6f7f9", "#eceef2", "#ffffff", "#eceff4", "#e2e6ed", "#d3d8e0", "#1a1d23", "#515a68", "#1d5fd0", "#ffffff", "#d3e2fb", "#b3261e", "#7d5200", "#1b6b3c"],
            "Retro Purple": ["#191324", "#1f182d", "#251d36", "#2f2545", "#392d53", "#43365f", "#f2ecfb", "#b9a9d3", "#c79bff", "#22103d", "#47307a", "#ff93a4", "#f5c264", "#7fd8a4"],
            "Ocean Blue": ["#0d1a26", "#11212f", "#152838", "#1c3448", "#234057", "#2a4a64", "#e8f2f9", "#9fb8cb", "#54c0f0", "#04202f", "#164769", "#ff958c", "#f2c265", "#6fd5b0"],
            "Forest Green": ["#111a15", "#16221b", "#1a2921", "#22352a", "#2a4134", "#324c3d", "#eaf4ed", "#a3bbac", "#74d39a", "#08240f", "#1e4e33", "#ff968a", "#eec364", "#8fdc86"],
            "Midnight Glass": ["#08090d", "#0e1016", "#12151d", "#1a1e29", "#222735", "#2a3040", "#f0f2f8", "#a0a8bb", "#9db4ff", "#0c1230", "#2b3566", "#ff8f95", "#edc06a", "#79d3ad"]
        })
    readonly property var names: ["System", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"]
    readonly property string paletteName: App.appearance.theme === "System" ? (App.appearance.dark ? "System Dark" : "System Light") : App.appearance.theme
    readonly property var swatch: palettes[paletteName] ?? palettes["System Dark"]
    readonly property bool dark: paletteName !== "System Light"

    readonly property color window: swatch[0]
    readonly property color sidebar: swatch[1]
    readonly property color surface: swatch[2]
    readonly property color raised: swatch[3]
    readonly property color hover: swatch[4]
    readonly property color border: swatch[5]
    readonly property color text: swatch[6]
    readonly property color textSecondary: swatch[7]
    readonly property color accent: swatch[8]
    readonly property color accentText: swatch[9]
    // Grounds of a button under the pointer and under the finger: away from the colour of its text.
    readonly property color accentHovered: dark ? Qt.lighter(accent, 1.07) : Qt.darker(accent, 1.1)
    readonly property color accentPressed: dark ? Qt.lighter(accent, 1.15) : Qt.darker(accent, 1.25)
    // The ground of a button that destroys something, in every theme the same red.
    readonly property color dangerFill: "#c62f26"
    readonly property color dangerHovered: "#b3271f"
    readonly property color dangerPressed: "#9c1f18"
    readonly property color dangerText: "#ffffff"
    readonly property color selection: swatch[10]
    readonly property color danger: swatch[11]
    readonly property color warning: swatch[12]
    readonly property color success: swatch[13]
    readonly property color transparent: "transparent"
    readonly property color scrim: Qt.rgba(0, 0, 0, dark ? 0.6 : 0.35)
    readonly property color shadow: Qt.rgba(0, 0, 0, dark ? 0.35 : 0.12)
    readonly property color reflectionNear: Qt.rgba(window.r, window.g, window.b, 0.68)
    readonly property color coverText: "#ffffff"
    // Behind pictures over the whole window, whatever the theme.
    readonly property color viewer: Qt.rgba(0, 0, 0, 0.93)
    readonly property color noticeRed: dark ? "#ff6b62" : "#c4271c"
    readonly property color noticeOrange: dark ? "#ff9f3f" : "#b45a00"
    readonly property color noticeYellow: dark ? "#f5cf45" : "#8a6a00"
    readonly property color noticeBlue: dark ? "#64a8ff" : "#1d5fd0"
    readonly property color noticeOrangeGround: Qt.rgba(1, 0.58, 0, 0.1)
    readonly property color noticeBlueGround: Qt.rgba(0, 0.48, 1, 0.1)
    // Marks on covers, which may be of any colour.
    readonly property color badge: Qt.rgba(0, 0, 0, 0.7)
    readonly property color badgeGood: "#8ce5a8"
    readonly property color badgeStar: "#ffd166"

    readonly property string badgeSource: "image://badge/" + badge.toString().slice(1) + "/" + coverText.toString().slice(1) + "/" + badgeGood.toString().slice(1) + "/"
    readonly property string badgeStarSource: "image://badge/" + badge.toString().slice(1) + "/" + badgeStar.toString().slice(1) + "/" + badgeGood.toString().slice(1) + "/favorite"

    // Placeholder covers: the title's own hue, dark enough for white letters whatever it is.
    function coverColor(hue: real): color {
        return Qt.hsla(hue, 0.3, 0.27, 1);
    }

    readonly property int space4: 4
    readonly property int space8: 8
    readonly property int space12: 12
    readonly property int space16: 16
    readonly property int space24: 24

    readonly property int radiusSmall: 4
    readonly property int radius: 6
    readonly property int radiusCover: 8
    readonly property int radiusDialog: 12

    // What cannot be used now is faint, and readable still.
    readonly property real disabledOpacity: 0.65

    // What stands only as it was last seen.
    readonly property real awayOpacity: 0.45

    // Pixels at a text scale of 1; text follows the user's scale up to 2.
    readonly property real textScale: App.appearance.textScale
    readonly property int textCaption: Math.round(11 * textScale)
    readonly property int textSmall: Math.round(12 * textScale)
    readonly property int textBody: Math.round(13 * textScale)
    readonly property int textTitle: Math.round(16 * textScale)
    readonly property int textHeadline: Math.round(20 * textScale)
    readonly property int textLarge: Math.round(30 * textScale)
    readonly property int rowHeight: Math.round(30 * textScale)
    readonly property int controlHeight: Math.round(32 * textScale)

    readonly property int fast: App.appearance.reducedMotion ? 0 : 120
    readonly property int slow: App.appearance.reducedMotion ? 0 : 200
}
