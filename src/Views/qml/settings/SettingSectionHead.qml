import QtQuick
import Ludarium

AppText {
    topPadding: Theme.space16
    bottomPadding: Theme.space4
    leftPadding: Theme.space12
    color: Theme.textSecondary
    font.pixelSize: Theme.textSmall
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
