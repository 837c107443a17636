#include "Views/GamepadKeys.h"

#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"
#include "Views/support/DesktopFixture.h"
#include "Views/support/FixtureCollection.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

class GamepadKeysTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(fixture.load());
        keys = std::make_unique<GamepadKeys>(fixture.state, gamepad);
        EXPECT_FALSE(gamepad.isListening()) << "no window has the focus";
        window = &fixture.window();
        window->requestActivate();
        ASSERT_TRUE(waitUntil([&] { return QGuiApplication::focusWindow() == window; }));
        fixture.desktop.browse()->setCurrentRow(0);
    }
    int row() { return fixture.desktop.browse()->currentRow(); }
    void act(Gamepad::Action action) {
        Q_EMIT gamepad.acted(action);
        QCoreApplication::processEvents();
    }

    DesktopFixture fixture{true};
    QTemporaryDir devices;
    Gamepad gamepad{devices.path()};
    std::unique_ptr<GamepadKeys> keys;
    QQuickWindow *window = nullptr;
};

TEST_F(GamepadKeysTest, MovesTheSelectionAsTheKeysDo) {
    using Action = Gamepad::Action;
    act(Action::Right);
    EXPECT_EQ(row(), 1);
    act(Action::Down);
    const int below = row();
    EXPECT_GT(below, 1);
    act(Action::Up);
    EXPECT_EQ(row(), 1);
    act(Action::Left);
    EXPECT_EQ(row(), 0);
    act(Action::NextPage);
    EXPECT_GT(row(), 0);
    act(Action::PreviousPage);
    EXPECT_EQ(row(), 0);
}

TEST_F(GamepadKeysTest, GoesBackToAllGamesWhenNothingElseIsOpen) {
    const QString platform = fixture.state.gameLibrary().games().first()->platform;
    fixture.state.setSelectedPlatform(platform);
    ASSERT_TRUE(fixture.desktop.browse()->isFiltered());
    act(Gamepad::Action::Back);
    EXPECT_FALSE(fixture.desktop.browse()->isFiltered());
}

/// Of what the window shows.
QQuickItem *itemWith(QQuickItem *parent, const char *property, const QString &value) {
    if (parent->isVisible() && parent->property(property).toString() == value)
        return parent;
    for (QQuickItem *child : parent->childItems())
        if (QQuickItem *found = itemWith(child, property, value))
            return found;
    return nullptr;
}

TEST_F(GamepadKeysTest, LeavesWhateverLiesOverTheGames) {
    using Open = std::function<void()>;
    const auto call = [&](const char *method) {
        return Open([=, this] { QMetaObject::invokeMethod(window, method); });
    };
    const auto button = [&](const char *icon) {
        return Open([=, this] {
            itemWith(window->contentItem(), "iconName", QString::fromUtf8(icon))->forceActiveFocus(Qt::TabFocusReason);
            act(Gamepad::Action::Select);
        });
    };
    const QList<std::pair<QString, Open>> places{
        {QStringLiteral("search"), call("focusSearch")},
        {QStringLiteral("sidebar filter"), call("filterSidebar")},
        {QStringLiteral("picker"), call("showFolderPicker")},
        {QStringLiteral("about"), call("showAbout")},
        {QStringLiteral("facets"), button("filter")},
        {QStringLiteral("sort menu"), button("sort")},
        {QStringLiteral("game menu"), [&] { act(Gamepad::Action::Menu); }},
        {QStringLiteral("detail pane"), [&] { act(Gamepad::Action::NextArea); }},
    };
    const auto inGames = [&] {
        const QQuickItem *item = window->activeFocusItem();
        return item && QByteArray(item->metaObject()->className()).startsWith("GameGroupGridView");
    };
    ASSERT_TRUE(waitUntil(inGames));
    fixture.state.setSelectedPlatform(fixture.state.gameLibrary().games().first()->platform);
    for (const auto &[name, open] : places) {
        open();
        ASSERT_TRUE(waitUntil([&] { return !inGames(); })) << name.toStdString() << " does not take the keyboard";
        for (int i = 0; i < 3 && !inGames(); ++i) {
            act(Gamepad::Action::Back);
            waitUntil(inGames, 300);
        }
        EXPECT_TRUE(inGames()) << name.toStdString() << " is not left";
        EXPECT_TRUE(fixture.desktop.browse()->isFiltered()) << name.toStdString() << " lets a press through";
    }
}

TEST_F(GamepadKeysTest, PressesTheButtonThatHasTheFocusAndNotTheDefaultOne) {
    for (const QString &chosen : {QStringLiteral("Play"), QStringLiteral("Cancel")}) {
        std::optional<int> answer;
        Alert alert;
        alert.title = QStringLiteral("Start it?");
        alert.buttons = {QStringLiteral("Play"), QStringLiteral("Cancel")};
        auto ask = [](QmlDialogs &dialogs, Alert asked, std::optional<int> &result) -> QCoro::Task<> {
            result = co_await dialogs.ask(asked);
        };
        const QCoro::Task<> asking = ask(fixture.dialogs, alert, answer);
        const auto focused = [&] {
            return window->activeFocusItem() ? window->activeFocusItem()->property("text").toString() : QString();
        };
        ASSERT_TRUE(waitUntil([&] { return alert.buttons.contains(focused()); })) << "no button has the focus";
        for (int i = 0; i < 4 && focused() != chosen; ++i)
            act(Gamepad::Action::NextArea);
        ASSERT_EQ(focused(), chosen);
        act(Gamepad::Action::Select);
        ASSERT_TRUE(waitUntil([&] { return answer.has_value(); }));
        EXPECT_EQ(alert.buttons.value(*answer), chosen);
    }
}

TEST_F(GamepadKeysTest, IsDeafWhileAGameStarts) {
    EXPECT_TRUE(gamepad.isListening());
    bool heardWhileLaunching = false;
    bool launched = false;
    QObject::connect(&fixture.state.gameLauncher(), &GameLauncher::launchStateChanged, window, [&] {
        launched = launched || fixture.state.gameLauncher().isLaunching();
        heardWhileLaunching =
            heardWhileLaunching || (fixture.state.gameLauncher().isLaunching() && gamepad.isListening());
    });
    fixture.desktop.launch()->playSelected();
    ASSERT_TRUE(waitUntil([&] { return launched; }));
    EXPECT_FALSE(heardWhileLaunching);
    EXPECT_TRUE(waitUntil([&] {
        fixture.dialogs.dismiss();
        return !fixture.desktop.launch()->isLaunching();
    }));
}

TEST_F(GamepadKeysTest, IsDeafWhileAGameRunsWhoeverStartedIt) {
    ProcessSpec spec;
    spec.program = QStringLiteral("/bin/sleep");
    spec.arguments.append(QStringLiteral("60"));
    const ProcessId process = await(fixture.host.processes.startEmulator(spec));
    PlaySessionTracker other(fixture.host); // of another program
    other.startSession(fixture.state.gameLibrary().games().first(), process);
    EXPECT_TRUE(waitUntil([&] { return !gamepad.isListening(); }));
    fixture.host.processes.askToEnd(process);
    EXPECT_TRUE(waitUntil([&] { return gamepad.isListening(); }));
}

} // namespace

} // namespace ludarium::test
