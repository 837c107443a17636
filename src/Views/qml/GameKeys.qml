import QtQuick
import Ludarium

// What the keys do in every view of the games.
QtObject {
    id: keys

    // Width of the grid on screen, 0 elsewhere.
    property real gridWidth: 0
    property int pageRows: 10

    signal menuWanted

    function handle(event: var) {
        if (event.modifiers & ~(Qt.KeypadModifier | Qt.ShiftModifier))
            return;
        switch (event.key) {
        case Qt.Key_Left:
            App.browse.moveLeft();
            break;
        case Qt.Key_Right:
            App.browse.moveRight();
            break;
        case Qt.Key_Up:
            App.browse.moveUp(keys.gridWidth);
            break;
        case Qt.Key_Down:
            App.browse.moveDown(keys.gridWidth);
            break;
        case Qt.Key_Home:
            App.browse.moveBy(-App.browse.games.count);
            break;
        case Qt.Key_End:
            App.browse.moveBy(App.browse.games.count);
            break;
        case Qt.Key_PageUp:
            App.browse.moveBy(-keys.pageRows);
            break;
        case Qt.Key_PageDown:
            App.browse.moveBy(keys.pageRows);
            break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            App.launch.playSelected();
            break;
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier))
                return;
            keys.menuWanted();
            break;
        case Qt.Key_Menu:
            keys.menuWanted();
            break;
        default:
            return;
        }
        event.accepted = true;
    }
}
