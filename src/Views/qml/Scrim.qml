import QtQuick
import Ludarium

// What covers the window below a panel that has to be answered or left first. While one lies there, the commands of the
// window are deaf.
Rectangle {
    color: Theme.scrim
}
