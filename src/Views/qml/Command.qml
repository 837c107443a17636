import QtQuick.Controls.Basic

// A command of the menus.
Action {
    // Why it cannot be used, where that does not go without saying.
    property string reason
}
