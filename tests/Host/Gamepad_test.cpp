#include "Host/Gamepad.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#define SDL_MAIN_HANDLED
#include <SDL.h>

using namespace ludarium;
using testing::ElementsAre;
using testing::IsEmpty;
using Action = Gamepad::Action;

namespace {

void spin(
    int milliseconds, const std::function<bool()> &done = [] { return false; }) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

/// A pad that SDL makes up, with the buttons and axes of its usual layout.
class VirtualPad {
  public:
    VirtualPad()
        : m_device(SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX,
                                             SDL_CONTROLLER_BUTTON_MAX, 0)),
          m_joystick(SDL_JoystickOpen(m_device)) {
        axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_JOYSTICK_AXIS_MIN); // that is where a trigger rests
        axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, SDL_JOYSTICK_AXIS_MIN);
    }
    Q_DISABLE_COPY_MOVE(VirtualPad)
    ~VirtualPad() {
        const SDL_JoystickID id = SDL_JoystickInstanceID(m_joystick);
        SDL_JoystickClose(m_joystick);
        for (int i = 0; i < SDL_NumJoysticks(); ++i)
            if (SDL_JoystickGetDeviceInstanceID(i) == id)
                SDL_JoystickDetachVirtual(i);
    }
    void button(int button, bool down) { SDL_JoystickSetVirtualButton(m_joystick, button, down ? 1 : 0); }
    void axis(int axis, int value) { SDL_JoystickSetVirtualAxis(m_joystick, axis, Sint16(value)); }

  private:
    int m_device;
    SDL_Joystick *m_joystick;
};

class GamepadTest : public testing::Test {
  protected:
    GamepadTest() {
        QObject::connect(&gamepad, &Gamepad::acted, &gamepad, [this](Action action) { acted.append(action); });
        gamepad.setListening(true);
    }
    /// What the system does when a device comes: a file appears in the folder.
    void announce() {
        QFile file(devices.filePath(QStringLiteral("event%1").arg(++announced)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    std::unique_ptr<VirtualPad> plugIn() {
        auto pad = std::make_unique<VirtualPad>();
        announce();
        spin(5000, [&] { return gamepad.padCount() == 1; });
        EXPECT_EQ(gamepad.padCount(), 1);
        return pad;
    }

    QTemporaryDir devices;
    Gamepad gamepad{devices.path()};
    QList<Action> acted;
    int announced = 0;
};

TEST_F(GamepadTest, GivesEachPartOfAPadItsActionOnce) {
    const auto pad = plugIn();
    const struct {
        bool axis;
        int part;
        int value;
        std::vector<Action> actions;
    } cases[] = {
        {false, SDL_CONTROLLER_BUTTON_DPAD_LEFT, 1, {Action::Left}},
        {false, SDL_CONTROLLER_BUTTON_DPAD_RIGHT, 1, {Action::Right}},
        {false, SDL_CONTROLLER_BUTTON_DPAD_UP, 1, {Action::Up}},
        {false, SDL_CONTROLLER_BUTTON_DPAD_DOWN, 1, {Action::Down}},
        {false, SDL_CONTROLLER_BUTTON_A, 1, {Action::Select}},
        {false, SDL_CONTROLLER_BUTTON_B, 1, {Action::Back}},
        {false, SDL_CONTROLLER_BUTTON_X, 1, {Action::Menu}},
        {false, SDL_CONTROLLER_BUTTON_START, 1, {Action::Menu}},
        {false, SDL_CONTROLLER_BUTTON_LEFTSHOULDER, 1, {Action::PreviousPage}},
        {false, SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, 1, {Action::NextPage}},
        {false, SDL_CONTROLLER_BUTTON_GUIDE, 1, {}},
        {true, SDL_CONTROLLER_AXIS_LEFTX, -30'000, {Action::Left}},
        {true, SDL_CONTROLLER_AXIS_LEFTX, 30'000, {Action::Right}},
        {true, SDL_CONTROLLER_AXIS_LEFTY, -32'768, {Action::Up}},
        {true, SDL_CONTROLLER_AXIS_LEFTY, 30'000, {Action::Down}},
        {true, SDL_CONTROLLER_AXIS_LEFTX, 9'000, {}},
        {true, SDL_CONTROLLER_AXIS_RIGHTX, 30'000, {}},
        {true, SDL_CONTROLLER_AXIS_TRIGGERLEFT, 32'000, {Action::PreviousArea}},
        {true, SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 32'000, {Action::NextArea}},
    };
    for (const auto &c : cases) {
        acted.clear();
        const bool trigger = c.part >= SDL_CONTROLLER_AXIS_TRIGGERLEFT;
        c.axis ? pad->axis(c.part, c.value) : pad->button(c.part, true);
        spin(60);
        c.axis ? pad->axis(c.part, trigger ? SDL_JOYSTICK_AXIS_MIN : 0) : pad->button(c.part, false);
        spin(60);
        EXPECT_THAT(acted, testing::ElementsAreArray(c.actions))
            << (c.axis ? "axis " : "button ") << c.part << " at " << c.value;
    }
}

TEST_F(GamepadTest, TakesATremblingThumbForOnePress) {
    const auto pad = plugIn();
    for (const int x : {19'000, 15'000, 19'000, 13'000, 25'000, 0}) {
        pad->axis(SDL_CONTROLLER_AXIS_LEFTX, x);
        spin(40);
    }
    EXPECT_THAT(acted, ElementsAre(Action::Right));
}

TEST_F(GamepadTest, RepeatsTheDirectionThatIsHeldAndNothingElse) {
    const auto pad = plugIn();
    pad->button(SDL_CONTROLLER_BUTTON_A, true);
    spin(Gamepad::repeatDelay + 3 * Gamepad::repeatInterval);
    EXPECT_THAT(acted, ElementsAre(Action::Select));
    pad->button(SDL_CONTROLLER_BUTTON_A, false);

    acted.clear();
    pad->button(SDL_CONTROLLER_BUTTON_DPAD_DOWN, true);
    spin(Gamepad::repeatDelay / 2);
    EXPECT_EQ(acted.size(), 1);
    spin(5000, [&] { return acted.size() >= 4; });
    EXPECT_THAT(acted, testing::Each(Action::Down));
    EXPECT_GE(acted.size(), 4);
    pad->button(SDL_CONTROLLER_BUTTON_DPAD_DOWN, false);
    spin(60);
    acted.clear();
    spin(Gamepad::repeatDelay + 2 * Gamepad::repeatInterval);
    EXPECT_THAT(acted, IsEmpty());
}

TEST_F(GamepadTest, ForgetsWhatWasPressedWhileNobodyListened) {
    const auto pad = plugIn();
    pad->button(SDL_CONTROLLER_BUTTON_DPAD_LEFT, true);
    spin(60);
    gamepad.setListening(false);
    pad->button(SDL_CONTROLLER_BUTTON_A, true);
    pad->axis(SDL_CONTROLLER_AXIS_LEFTX, 30'000);
    pad->axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, 30'000);
    spin(60);
    acted.clear();
    spin(Gamepad::repeatDelay + 2 * Gamepad::repeatInterval);
    EXPECT_THAT(acted, IsEmpty()) << "nobody listens";
    gamepad.setListening(true);
    pad->axis(SDL_CONTROLLER_AXIS_LEFTX, 29'000);
    pad->axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, 29'000);
    spin(Gamepad::repeatDelay + 2 * Gamepad::repeatInterval);
    EXPECT_THAT(acted, IsEmpty()) << "what is held from before means nothing";
    pad->button(SDL_CONTROLLER_BUTTON_B, true);
    spin(60);
    EXPECT_THAT(acted, ElementsAre(Action::Back));
}

TEST_F(GamepadTest, NoticesPadsThatComeAndGo) {
    spin(200);
    EXPECT_EQ(gamepad.padCount(), 0);
    auto first = plugIn();
    first->button(SDL_CONTROLLER_BUTTON_DPAD_UP, true);
    spin(60);
    first.reset();
    spin(5000, [&] { return gamepad.padCount() == 0; });
    EXPECT_EQ(gamepad.padCount(), 0);
    acted.clear();
    spin(Gamepad::repeatDelay + 2 * Gamepad::repeatInterval);
    EXPECT_THAT(acted, IsEmpty()) << "a pad that is gone holds nothing";
    const auto second = plugIn();
    second->button(SDL_CONTROLLER_BUTTON_A, true);
    spin(60);
    EXPECT_THAT(acted, ElementsAre(Action::Select));
}

} // namespace
