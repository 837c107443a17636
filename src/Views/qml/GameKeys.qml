import QtQuick
import Ludarium

// What the keys do in every view of the games.
QtObject {
    id: keys

    required property Item view
    property int columns: 1
    property int pageRows: 10

    function handle(event: var) {
        switch (event.key) {
        case Qt.Key_Left:
            App.browse.moveLeft();
            break;
        case Qt.Key_Right:
            App.browse.moveRight();
            break;
        case Qt.Key_Up:
            App.browse.moveUp(keys.columns);
            break;
        case Qt.Key_Down:
            App.browse.moveDown(keys.columns);
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
            if (event.modifiers & ~Qt.KeypadModifier)
                return;
            App.launch.playSelected();
            break;
        default:
            return;
        }
        event.accepted = true;
    }
}
