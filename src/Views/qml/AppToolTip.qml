import QtQuick.Controls.Basic
import Ludarium

ToolTip {
    id: tip

    delay: 400
    padding: Theme.space8
    contentItem: AppText {
        text: tip.text
        font.pixelSize: Theme.textSmall
    }
    background: AppMenuGround {}
}
