#pragma once

#include "Host/Gamepad.h"

namespace ludarium {

class AppState;

/// Lets a gamepad do what the keys do, in whichever window of the program has the focus: an action is the press of its
/// key. Deaf while a game starts or runs, and while no window has the focus.
class GamepadKeys : public QObject {
    Q_OBJECT
  public:
    GamepadKeys(AppState &state, Gamepad &gamepad, QObject *parent = nullptr);

  private:
    bool isGameOn() const;
    void chooseListening();
    void act(Gamepad::Action action);

    AppState &m_state;
    Gamepad &m_gamepad;
    QTimer m_lookAgain; ///< runs while a game does and a window has the focus nevertheless
};

} // namespace ludarium
