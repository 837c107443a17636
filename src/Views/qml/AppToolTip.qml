import QtQuick
import QtQuick.Window
import QtQuick.Controls.Basic
import Ludarium

ToolTip {
    id: tip

    delay: 400
    padding: Theme.space8
    width: Math.min(implicitWidth, Math.round(340 * Theme.textScale), (parent?.Window.width ?? implicitWidth) - Theme.space24)
    contentItem: AppText {
        text: tip.text
        font.pixelSize: Theme.textSmall
        wrapMode: Text.Wrap
        maximumLineCount: 8
    }
    background: AppMenuGround {}
}
