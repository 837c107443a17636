#include "Host/Gamepad.h"

#include "Host/AppLogger.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>

#define SDL_MAIN_HANDLED
#include <SDL.h>

namespace ludarium {

namespace {

constexpr int pollInterval = 16;
/// A pad that was plugged in can be used once the system has set its permissions, which takes a moment.
constexpr int lookInterval = 250;
constexpr int lookTime = 3000;
constexpr int slowLookInterval = 3000;

// Of the full way of a stick or trigger. Released later than pressed, so that a trembling thumb presses once.
constexpr int pressedAt = 18'000;
constexpr int releasedAt = 12'000;

// Parts of a pad are numbered by their button; these come after the buttons.
constexpr int firstAxisPart = 100;
constexpr int stickPart = firstAxisPart + SDL_CONTROLLER_AXIS_LEFTX;

std::optional<Gamepad::Action> actionOf(int button) {
    using Action = Gamepad::Action;
    switch (button) {
    case SDL_CONTROLLER_BUTTON_DPAD_LEFT:
        return Action::Left;
    case SDL_CONTROLLER_BUTTON_DPAD_RIGHT:
        return Action::Right;
    case SDL_CONTROLLER_BUTTON_DPAD_UP:
        return Action::Up;
    case SDL_CONTROLLER_BUTTON_DPAD_DOWN:
        return Action::Down;
    case SDL_CONTROLLER_BUTTON_A:
        return Action::Select;
    case SDL_CONTROLLER_BUTTON_B:
        return Action::Back;
    case SDL_CONTROLLER_BUTTON_X:
    case SDL_CONTROLLER_BUTTON_START:
        return Action::Menu;
    case SDL_CONTROLLER_BUTTON_LEFTSHOULDER:
        return Action::PreviousPage;
    case SDL_CONTROLLER_BUTTON_RIGHTSHOULDER:
        return Action::NextPage;
    default:
        return std::nullopt;
    }
}

bool isDirection(Gamepad::Action action) {
    return action <= Gamepad::Action::Down;
}

} // namespace

struct Gamepad::Pad {
    SDL_GameController *controller = nullptr;
    int x = 0;
    int y = 0;
    std::optional<Action> stick; ///< where the stick points
    bool pulled[2] = {};         ///< the triggers

    Pad() = default;
    Q_DISABLE_COPY_MOVE(Pad)
    ~Pad() { SDL_GameControllerClose(controller); }
};

Gamepad::Gamepad(QString deviceFolder, QObject *parent) : QObject(parent), m_deviceFolder(std::move(deviceFolder)) {
    m_clock.start();
    connect(&m_timer, &QTimer::timeout, this, &Gamepad::poll);
}

Gamepad::~Gamepad() {
    m_pads.clear();
    if (m_started)
        SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

bool Gamepad::start() {
    if (m_started)
        return true;
    SDL_SetMainReady();
    // The windows and the signals of the process are Qt's, and without a window of its own SDL takes every event for
    // one of the background.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    // The drivers of the operating system do; SDL's own would change a pad's mode and lights under a running game.
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
        Log::warning(QStringLiteral("⚠️ Gamepads cannot be used: %1").arg(QString::fromUtf8(SDL_GetError())));
        return false;
    }
    m_started = true;
    if (QFileInfo(m_deviceFolder).isDir()) {
        m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{m_deviceFolder});
        connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &Gamepad::look);
    }
    return true;
}

void Gamepad::setListening(bool listening) {
    if (listening == m_listening || (listening && !start()))
        return;
    m_listening = listening;
    m_held.clear();
    if (listening) {
        takeEvents(true);
        look();
    }
    chooseTimer();
}

void Gamepad::look() {
    m_lookUntil = m_clock.elapsed() + lookTime;
    chooseTimer();
}

void Gamepad::chooseTimer() {
    int interval = 0;
    if (!m_pads.isEmpty())
        interval = pollInterval;
    else if (m_clock.elapsed() < m_lookUntil)
        interval = lookInterval;
    else if (!m_watcher)
        interval = slowLookInterval;
    if (!m_listening || interval == 0) {
        m_timer.stop();
    } else if (!m_timer.isActive() || m_timer.interval() != interval) {
        m_timer.setTimerType(interval == slowLookInterval ? Qt::VeryCoarseTimer : Qt::CoarseTimer);
        m_timer.start(interval);
    }
}

void Gamepad::poll() {
    takeEvents(false);
    repeat();
    chooseTimer();
}

void Gamepad::takeEvents(bool quietly) {
    SDL_Event event;
    // An action may make this object deaf.
    while ((quietly || m_listening) && SDL_PollEvent(&event) != 0)
        take(event, quietly);
}

void Gamepad::take(const SDL_Event &event, bool quietly) {
    switch (event.type) {
    case SDL_CONTROLLERDEVICEADDED:
        open(event.cdevice.which);
        break;
    case SDL_CONTROLLERDEVICEREMOVED:
        close(event.cdevice.which);
        break;
    case SDL_CONTROLLERBUTTONDOWN:
        if (const std::optional<Action> action = actionOf(event.cbutton.button))
            press(event.cbutton.which, event.cbutton.button, *action, quietly);
        break;
    case SDL_CONTROLLERBUTTONUP:
        release(event.cbutton.which, event.cbutton.button);
        break;
    case SDL_CONTROLLERAXISMOTION: {
        const std::shared_ptr<Pad> pad = m_pads.value(event.caxis.which);
        if (!pad)
            break;
        const int axis = event.caxis.axis;
        if (axis == SDL_CONTROLLER_AXIS_LEFTX || axis == SDL_CONTROLLER_AXIS_LEFTY) {
            (axis == SDL_CONTROLLER_AXIS_LEFTX ? pad->x : pad->y) = event.caxis.value;
            moveStick(*pad, event.caxis.which, quietly);
        } else if (axis == SDL_CONTROLLER_AXIS_TRIGGERLEFT || axis == SDL_CONTROLLER_AXIS_TRIGGERRIGHT) {
            const bool left = axis == SDL_CONTROLLER_AXIS_TRIGGERLEFT;
            bool &pulled = pad->pulled[left ? 0 : 1];
            if (!pulled && event.caxis.value > pressedAt) {
                pulled = true;
                press(event.caxis.which, axis + firstAxisPart, left ? Action::PreviousArea : Action::NextArea, quietly);
            } else if (pulled && event.caxis.value < releasedAt) {
                pulled = false;
                release(event.caxis.which, axis + firstAxisPart);
            }
        }
        break;
    }
    default:
        break;
    }
}

void Gamepad::open(int device) {
    auto pad = std::make_shared<Pad>();
    pad->controller = SDL_GameControllerOpen(device);
    if (!pad->controller) {
        Log::warning(QStringLiteral("⚠️ A gamepad cannot be used: %1").arg(QString::fromUtf8(SDL_GetError())));
        return;
    }
    const int id = SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(pad->controller));
    if (m_pads.contains(id))
        return;
    Log::info(QStringLiteral("🎮 Gamepad: %1").arg(QString::fromUtf8(SDL_GameControllerName(pad->controller))));
    m_pads.insert(id, pad);
    Q_EMIT padCountChanged();
}

void Gamepad::close(int pad) {
    m_held.removeIf([&](const Held &held) { return held.pad == pad; });
    if (m_pads.remove(pad) > 0)
        Q_EMIT padCountChanged();
}

void Gamepad::moveStick(Pad &pad, int id, bool quietly) {
    const auto along = [&](Action direction) {
        switch (direction) {
        case Action::Left:
            return -pad.x;
        case Action::Right:
            return pad.x;
        case Action::Up:
            return -pad.y;
        default:
            return pad.y;
        }
    };
    if (pad.stick && along(*pad.stick) >= releasedAt)
        return;
    pad.stick.reset();
    release(id, stickPart);
    const Action direction = std::abs(pad.x) >= std::abs(pad.y) ? (pad.x < 0 ? Action::Left : Action::Right)
                                                                : (pad.y < 0 ? Action::Up : Action::Down);
    if (along(direction) <= pressedAt)
        return;
    pad.stick = direction;
    press(id, stickPart, direction, quietly);
}

void Gamepad::press(int pad, int part, Action action, bool quietly) {
    const bool known = std::any_of(m_held.cbegin(), m_held.cend(),
                                   [&](const Held &held) { return held.pad == pad && held.part == part; });
    if (quietly || known)
        return;
    m_held.append({pad, part, action});
    m_nextRepeat = m_clock.elapsed() + repeatDelay;
    Q_EMIT acted(action);
}

void Gamepad::release(int pad, int part) {
    if (m_held.removeIf([&](const Held &held) { return held.pad == pad && held.part == part; }) > 0)
        m_nextRepeat = m_clock.elapsed() + repeatDelay;
}

void Gamepad::repeat() {
    if (m_held.isEmpty() || !isDirection(m_held.last().action) || m_clock.elapsed() < m_nextRepeat)
        return;
    // Counted from now: after a stall the moves that were missed do not come in a burst.
    m_nextRepeat = m_clock.elapsed() + repeatInterval;
    Q_EMIT acted(m_held.last().action);
}

} // namespace ludarium

// Here and not among those of the whole library: programs without a window are not to load SDL.
#include "moc_Gamepad.cpp"
