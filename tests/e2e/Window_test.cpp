#include "Host/HostPaths.h"
#include "Host/ProcessTable.h"
#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "demo/DemoCollection.h"
#include "e2e/CliRun.h"
#include "e2e/VirtualScreen.h"
#include "e2e/WindowRun.h"

#include <QDir>
#include <QStandardPaths>
#include <QThread>
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <optional>

// The desktop program as its user has it: a process of its own, seen from outside.

namespace ludarium::test {

namespace {

class WindowTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!WindowRun::isBuilt())
            GTEST_SKIP() << "the desktop program is not built";
    }
};

TEST_F(WindowTest, OpensTheFolderOfASecondStartAndSendsThatAway) {
    TinyCollection first, second;
    WindowRun window;
    ASSERT_NO_FATAL_FAILURE(window.start({first.path()}));
    const auto loads = [&](const QString &folder) {
        return window.log().contains(QStringLiteral("LOADING COLLECTION: ") + folder);
    };
    EXPECT_TRUE(eventually([&] { return loads(first.path()); }));
    // The second start stands in another folder and names its own by a relative path.
    const QString before = QDir::currentPath();
    QDir::setCurrent(second.path());
    EXPECT_EQ(window.startAgain({QStringLiteral(".")}), 0);
    QDir::setCurrent(before);
    EXPECT_TRUE(eventually([&] { return loads(second.path()); }));
    EXPECT_EQ(window.startAgain({}), 0) << "without a folder the window only comes to the front";
    EXPECT_TRUE(window.isRunning());
    EXPECT_TRUE(window.end());
    EXPECT_EQ(window.log().count(QStringLiteral("LOADING COLLECTION: ")), 2);
}

/// The program on the demo collection, on a screen of its own, ready for keys and clicks.
class WindowOnAScreen : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        if (IsSkipped())
            return;
        if (!VirtualScreen::isInstalled())
            GTEST_SKIP() << "Xvfb is not installed: no real keys and clicks";
        ASSERT_TRUE(screen.start());
        window = std::make_unique<WindowRun>(
            QStringLiteral("xcb"), QList{std::pair{QStringLiteral("DISPLAY"), screen.display()},
                                         // of the games, which shall not cover the window
                                         std::pair{QStringLiteral("SDL_VIDEODRIVER"), QStringLiteral("dummy")},
                                         std::pair{QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy")}});
        collection = folder.filePath(QStringLiteral("demo"));
        writeDemoCollection(collection);
        // Straight to the games, and every one of them counts as installed.
        {
            SqliteSettingsStore settings(HostPaths::native(window->home()).settingsFolder());
            settings.setValue(Settings::skipInstallCheck, true);
            settings.setValue(Settings::hasCompletedFirstRun, true);
            settings.setValue(Settings::dismissSlowLoadAlertPermanently, true); // a busy machine is asked otherwise
        }
        ASSERT_NO_FATAL_FAILURE(window->start({collection, QStringLiteral("--size"), QStringLiteral("1280x800")}));
        ASSERT_TRUE(eventually([&] { return window->log().contains(QStringLiteral("TOTAL FULL LOAD TIME")); }));
        ASSERT_TRUE(screen.waitForWindow(QStringLiteral("Ludarium")));
        ASSERT_TRUE(screen.waitForRest()) << "the splash goes and the covers come";
    }

    /// The titles of the favourites, as another program reads them from the settings.
    QStringList favourites() const {
        const CliResult result = CliRun().runProgram(
            CliRun::program(), {QStringLiteral("--home"), window->home(), QStringLiteral("--collection"), collection,
                                QStringLiteral("search"), QStringLiteral("--favorites"), QStringLiteral("--json")});
        return members(json(result).value(u"games").toArray(), "Title");
    }

    QTemporaryDir folder;
    QString collection;
    VirtualScreen screen;
    std::unique_ptr<WindowRun> window;
};

TEST_F(WindowOnAScreen, FollowsRealKeysAndClicks) {
    // Where the first cover is: right of the sidebar, below the menu bar and the toolbar.
    const QPoint firstCover(340, 240);
    // A busy machine pauses anywhere: that nothing moves is looked for only after what was asked for has come.
    const auto cover = [&] { return screen.picture().copy(QRect(firstCover - QPoint(60, 60), QSize(120, 120))); };
    const auto waitForOtherThan = [&](const QImage &old) {
        return eventually([&] { return cover() != old; }, 20'000) && screen.waitForRest();
    };
    const QImage unfiltered = cover();
    screen.key("ctrl+f");
    screen.type("keeper");
    ASSERT_TRUE(waitForOtherThan(unfiltered));
    const QImage found = cover();
    screen.click(firstCover, 3);
    ASSERT_TRUE(waitForOtherThan(found)) << "no menu opens";
    screen.save("xvfb-menu");
    // The menu stands where the click was, though the pane that comes with the first selection makes the toolbar
    // higher.
    constexpr int rowsAbove = 4, rowHeight = 30; // Play, Setup, Versions, Variants, and a line of half a row
    screen.click(firstCover + QPoint(60, (rowsAbove + 1) * rowHeight + 4), 1);
    const QString keeper = QStringLiteral("The Keeper of Gull Rock");
    EXPECT_TRUE(eventually([&] { return favourites() == QStringList{keeper}; }, 10'000))
        << "the search found another game, or the menu does not do what it says";

    screen.key("ctrl+f");
    screen.key("Escape"); // empties the field
    screen.key("Escape"); // and leaves it
    ASSERT_TRUE(waitForOtherThan(found));
    screen.key("Home");
    screen.key("ctrl+d");
    EXPECT_TRUE(eventually([&] { return favourites().size() == 2; }, 10'000));
    QStringList first = favourites();
    first.removeOne(keeper);
    screen.key("Right");
    screen.key("ctrl+d");
    EXPECT_TRUE(eventually([&] { return favourites().size() == 3; }, 10'000)) << "the arrow selected no other game";
    screen.key("Left");
    screen.key("ctrl+d");
    EXPECT_TRUE(eventually([&] { return favourites().size() == 2; }, 10'000));
    EXPECT_FALSE(favourites().contains(first.value(0))) << "left is not where right came from";
    screen.save("xvfb-end");

    screen.key("ctrl+q");
    EXPECT_TRUE(eventually([&] { return window->hasEnded(); }, 10'000)) << "the program does not quit";
}

/// Where the sign of the Stop button is, which moves with what the pane shows above it: a bright square that stands
/// alone on one colour.
std::optional<QPoint> stopSign(const QImage &screen) {
    constexpr int inner = 2, outer = 9, paneLeft = 920;
    const auto isOneColour = [&](const QList<QPoint> &points) {
        const QRgb first = screen.pixel(points.first());
        return std::all_of(points.begin(), points.end(), [&](const QPoint &p) { return screen.pixel(p) == first; });
    };
    for (int y = outer; y + outer < screen.height(); ++y)
        for (int x = paneLeft + outer; x + outer < screen.width(); ++x) {
            if (qGray(screen.pixel(x, y)) < qGray(screen.pixel(x, y - outer)) + 100)
                continue;
            QList<QPoint> square, frame;
            for (int dy = -inner; dy <= inner; ++dy)
                for (int dx = -inner; dx <= inner; ++dx)
                    square.append({x + dx, y + dy});
            for (int d = -outer; d <= outer; ++d)
                frame << QPoint(x + d, y - outer) << QPoint(x + d, y + outer) << QPoint(x - outer, y + d)
                      << QPoint(x + outer, y + d);
            if (isOneColour(square) && isOneColour(frame))
                return QPoint(x, y);
        }
    return {};
}

TEST_F(WindowOnAScreen, ADoubleClickStartsTheGameUnderItsFirstPressOnceAndStopEndsIt) {
    if (QStandardPaths::findExecutable(QStringLiteral("dosbox")).isEmpty())
        GTEST_SKIP() << "dosbox is not installed";
    // In the third column and the second row, as long as no game is selected: the pane that comes with the first
    // selection leaves room for three columns, and another cover is there then.
    const QPoint courier(760, 580);
    const auto launches = [&] { return window->log().count(QStringLiteral("=== LAUNCH START ===")); };
    screen.doubleClick(courier);
    const QString started = QStringLiteral("DOSBox launched successfully (PID: ");
    ASSERT_TRUE(eventually([&] { return window->log().contains(started); }));
    EXPECT_TRUE(window->log().contains(QStringLiteral("Game: Comet Courier II: The Long Mail\n")))
        << "the second click started another game";
    EXPECT_TRUE(favourites().isEmpty()) << "the second click pressed a button of the pane";
    const qint64 pid = window->log().section(started, 1, 1).section(u')', 0, 0).toLongLong();
    ASSERT_GT(pid, 0);
    const auto isRunning = [&] { return processStartTime(pid).has_value(); };

    screen.key("Return");
    screen.key("ctrl+Return");
    EXPECT_TRUE(eventually([&] { return window->log().count(QStringLiteral("is running already")) == 2; }))
        << "a running game is started again, or nothing is said";
    EXPECT_EQ(launches(), 1);
    screen.save("xvfb-running");

    const auto ground = [&] { return screen.picture().pixel(4, 400); };
    const QRgb bare = ground();
    const auto waitForQuestion = [&](bool open) {
        const bool came = eventually([&] { return (ground() != bare) == open; }, 10'000);
        QThread::msleep(500); // it has faded in
        return came;
    };
    std::optional<QPoint> sign; // which the pointer covers from then on
    const auto pressStop = [&] {
        if (!sign && !eventually([&] { return (sign = stopSign(screen.picture())).has_value(); }, 10'000))
            return false;
        screen.click(*sign, 1);
        return waitForQuestion(true);
    };
    ASSERT_TRUE(pressStop());
    screen.key("Return"); // the question opens on Cancel
    ASSERT_TRUE(waitForQuestion(false));
    EXPECT_TRUE(isRunning());
    ASSERT_TRUE(pressStop());
    screen.save("xvfb-stop");
    screen.key("shift+Tab");
    screen.key("Return");
    EXPECT_TRUE(eventually([&] { return !isRunning(); }, 10'000)) << "Stop does not end the game";
    if (isRunning())
        ::kill(pid_t(pid), SIGKILL);
}

} // namespace

} // namespace ludarium::test
