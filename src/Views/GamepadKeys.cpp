#include "Views/GamepadKeys.h"

#include "App/AppState.h"
#include "Host/Host.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/PlaySessionTracker.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace ludarium {

namespace {

constexpr int lookAgainInterval = 1000;

bool press(QWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    QKeyEvent pressed(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(&window, &pressed);
    QKeyEvent released(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(&window, &released);
    return pressed.isAccepted();
}

/// The key that presses what has the focus: that of a button is the space bar, while Return may go past it to the
/// default button of a dialog, and that of a choice that is folded up.
Qt::Key selectingKey(const QWindow &window) {
    const QObject *focus = window.focusObject();
    const bool pressed = focus && (focus->inherits("QQuickAbstractButton") || focus->inherits("QQuickComboBox"));
    return pressed ? Qt::Key_Space : Qt::Key_Return;
}

} // namespace

GamepadKeys::GamepadKeys(AppState &state, Gamepad &gamepad, QObject *parent)
    : QObject(parent), m_state(state), m_gamepad(gamepad) {
    m_lookAgain.setInterval(lookAgainInterval);
    connect(&m_lookAgain, &QTimer::timeout, this, &GamepadKeys::chooseListening);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &GamepadKeys::chooseListening);
    connect(&state.gameLauncher(), &GameLauncher::launchStateChanged, this, &GamepadKeys::chooseListening);
    connect(&state.sessionTracker(), &PlaySessionTracker::runningChanged, this, &GamepadKeys::chooseListening);
    connect(&gamepad, &Gamepad::acted, this, &GamepadKeys::act);
    chooseListening();
}

bool GamepadKeys::isGameOn() const {
    return m_state.gameLauncher().isLaunching() || !m_state.sessionTracker().runningGames().isEmpty();
}

void GamepadKeys::chooseListening() {
    const bool focused = QGuiApplication::focusWindow() != nullptr;
    const bool gameOn = focused && isGameOn();
    m_gamepad.setListening(focused && !gameOn);
    if (gameOn && !m_lookAgain.isActive())
        m_lookAgain.start();
    else if (!gameOn)
        m_lookAgain.stop();
}

void GamepadKeys::act(Gamepad::Action action) {
    QWindow *window = QGuiApplication::focusWindow();
    if (!window)
        return;
    using Action = Gamepad::Action;
    switch (action) {
    case Action::Left:
        press(*window, Qt::Key_Left);
        break;
    case Action::Right:
        press(*window, Qt::Key_Right);
        break;
    case Action::Up:
        press(*window, Qt::Key_Up);
        break;
    case Action::Down:
        press(*window, Qt::Key_Down);
        break;
    case Action::Select:
        press(*window, selectingKey(*window));
        break;
    case Action::Back:
        // What a key has nothing to leave for, in the main window, is the place that is shown.
        if (!press(*window, Qt::Key_Escape) && !window->transientParent()) {
            m_state.setSearchText({});
            m_state.clearFilters();
        }
        break;
    case Action::Menu:
        press(*window, Qt::Key_Menu);
        break;
    case Action::PreviousPage:
        press(*window, Qt::Key_PageUp);
        break;
    case Action::NextPage:
        press(*window, Qt::Key_PageDown);
        break;
    case Action::PreviousArea:
        press(*window, Qt::Key_Backtab, Qt::ShiftModifier);
        break;
    case Action::NextArea:
        press(*window, Qt::Key_Tab);
        break;
    }
}

} // namespace ludarium
