import QtQuick
import QtQuick.Controls.Basic
import Ludarium

// The facets: one list of values at a time, with a search in it. A value stays until it is chosen again.
Popup {
    id: popup

    width: Math.round(320 * Math.min(Theme.textScale, 1.6))
    padding: Theme.space12
    focus: true
    background: AppMenuGround {}
    onOpened: (contentItem as FilterContent).begin()

    contentItem: FilterContent {
        onAbandoned: popup.close()
    }
}
