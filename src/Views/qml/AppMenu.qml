import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Menu {
    id: menu

    // Why the menu, as an entry of another, is disabled.
    property string reason

    padding: Theme.space4
    delegate: AppMenuItem {
        enabled: !subMenu || subMenu.enabled
        why: (subMenu as AppMenu)?.reason ?? ""
    }
    background: AppMenuGround {
        implicitWidth: Math.round(288 * Math.min(Theme.textScale, 1.6))
    }
    contentItem: AppMenuList {
        menu: menu
    }
}
