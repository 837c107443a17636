import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Window
import Ludarium

// The entries of a menu, which tell why they are disabled.
ListView {
    id: list

    required property Menu menu
    // A disabled entry hears nothing of the pointer itself.
    readonly property AppMenuItem pointed: (hover.hovered ? itemAt(hover.point.position.x + contentX, hover.point.position.y + contentY) : currentItem) as AppMenuItem

    implicitHeight: contentHeight
    model: menu.contentModel
    interactive: Window.window ? contentHeight + menu.topPadding + menu.bottomPadding > Window.window.height : false
    clip: true
    currentIndex: menu.currentIndex
    ScrollBar.vertical: AppScrollBar {}

    HoverHandler {
        id: hover
    }
    AppToolTip {
        x: list.width + Theme.space8
        y: list.pointed ? list.pointed.y - list.contentY : 0
        visible: list.menu.opened && list.pointed !== null && !list.pointed.enabled && list.pointed.why !== ""
        text: list.pointed?.why ?? ""
    }
}
