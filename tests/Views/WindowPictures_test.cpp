#include "Host/Settings.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"
#include "support/Picture.h"

#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

QQuickWindow *open(QQuickWindow &main, const char *function, const char *property) {
    if (!QMetaObject::invokeMethod(&main, function))
        return nullptr;
    return main.property(property).value<QQuickWindow *>();
}

void endSplash(DesktopFixture &fixture) {
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
}

/// Some programs of the machine, so that lists show both what is there and what is not.
void putPrograms(TestHost &machine) {
    machine.putProgram(QStringLiteral("/usr/bin/dosbox"), "echo 'dosbox-staging, version 0.82.0'\n");
    machine.putProgram(QStringLiteral("/usr/games/scummvm"), "echo 'ScummVM 2.8.1 (Apr 1 2025)'\n");
    machine.putProgram(QStringLiteral("/usr/bin/apt-get"), "exit 0\n");
    machine.putProgram(QStringLiteral("/usr/bin/sed"), "exit 0\n");
    machine.putProgram(QStringLiteral("/bin/bash"), "echo 'GNU bash, version 5.2.15(1)-release'\n");
    machine.settings.setValue(Settings::mamePath, QStringLiteral("/opt/mame/mame"));
}

bool isQuiet(DesktopFixture &fixture) {
    return waitUntil([&] { return !fixture.desktop.emulators()->isChecking(); }) &&
           waitUntil([&] { return !fixture.desktop.dependencies()->isChecking(); });
}

/// "-double-text" after 100 %.
const QList<std::pair<double, QString>> scales{{1, QString()}, {2, QStringLiteral("-double-text")}};

} // namespace

TEST(WindowPictures, OfEveryTabOfTheSettings) {
    DesktopFixture fixture;
    putPrograms(fixture.machine);
    QQuickWindow &main = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    QQuickWindow *settings = open(main, "showSettings", "settingsWindow");
    ASSERT_NE(settings, nullptr);
    for (const auto &[scale, suffix] : scales) {
        fixture.desktop.appearance()->setTextScale(scale);
        for (const QString &tab : fixture.desktop.settings()->tabs()) {
            settings->setProperty("tab", tab);
            ASSERT_TRUE(isQuiet(fixture));
            takePicture(fixture, *settings, QStringLiteral("settings-") + tab.toLower() + suffix);
        }
        ASSERT_TRUE(
            QMetaObject::invokeMethod(settings, "jumpToKey", Q_ARG(QString, QStringLiteral("skipInstallCheck"))));
        ASSERT_TRUE(isQuiet(fixture));
        takePicture(fixture, *settings, QStringLiteral("settings-found") + suffix);
    }
    ASSERT_TRUE(fixture.desktop.appearance()->showTheme(QStringLiteral("System Light")));
    fixture.desktop.appearance()->setTextScale(1);
    settings->resize(560, 420);
    settings->setProperty("tab", QStringLiteral("General"));
    takePicture(fixture, *settings, QStringLiteral("settings-smallest-light"));
}

TEST(WindowPictures, OfEveryPageOfTheAssistant) {
    DesktopFixture fixture;
    putPrograms(fixture.machine);
    QQuickWindow &main = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(QMetaObject::invokeMethod(&main, "showAssistant"));
    auto *assistant = main.property("assistant").value<QObject *>();
    ASSERT_NE(assistant, nullptr);
    for (const auto &[scale, suffix] : scales) {
        fixture.desktop.appearance()->setTextScale(scale);
        for (int step = 0; step < 5; ++step) {
            assistant->setProperty("step", step);
            ASSERT_TRUE(isQuiet(fixture));
            takePicture(fixture, main, QStringLiteral("assistant-%1").arg(step + 1) + suffix);
        }
    }
    main.resize(900, 600);
    takePicture(fixture, main, QStringLiteral("assistant-smallest-double-text"));
    ASSERT_TRUE(QMetaObject::invokeMethod(assistant, "close"));
    for (const auto &[scale, suffix] : scales) {
        fixture.desktop.appearance()->setTextScale(scale);
        ASSERT_TRUE(QMetaObject::invokeMethod(&main, "showFolderPicker"));
        takePicture(fixture, main, QStringLiteral("folder-picker") + suffix);
    }
}

TEST(WindowPictures, OfAboutAndTheLogInDoubleText) {
    DesktopFixture fixture;
    QQuickWindow &main = fixture.window({900, 600});
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    fixture.desktop.appearance()->setTextScale(2);
    ASSERT_TRUE(QMetaObject::invokeMethod(&main, "showAbout"));
    takePicture(fixture, main, QStringLiteral("about-double-text"));
    QQuickWindow *logs = open(main, "showLogs", "logWindow");
    ASSERT_NE(logs, nullptr);
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.log()->count() > 2; }));
    takePicture(fixture, *logs, QStringLiteral("logs-double-text"));
}

TEST(WindowPictures, OfTheStatisticsWithAndWithoutPlays) {
    DesktopFixture fixture;
    QQuickWindow &main = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    QQuickWindow *statistics = open(main, "showStatistics", "statisticsWindow");
    ASSERT_NE(statistics, nullptr);
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.statistics()->isReady(); }));
    takePicture(fixture, *statistics, QStringLiteral("statistics-empty"));

    const QDateTime now = fixture.machine.clock.current;
    int number = 0;
    for (const GamePtr &game : fixture.state.gameLibrary().games()) {
        if (++number % 2 != 0)
            continue;
        fixture.machine.clock.current = now.addDays(-(number * number) % 29);
        fixture.state.gameLibrary().recordPlay(game->id, 900.0 * number);
        if (number % 6 == 0)
            fixture.state.gameLibrary().toggleFavorite(game->id);
    }
    fixture.machine.clock.current = now;
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.statistics()->mostPlayed().size() == 10; }));
    takePicture(fixture, *statistics, QStringLiteral("statistics"));
    statistics->resize(980, 1500);
    takePicture(fixture, *statistics, QStringLiteral("statistics-tall"));
    fixture.desktop.appearance()->setTextScale(2);
    statistics->resize(980, 1900);
    takePicture(fixture, *statistics, QStringLiteral("statistics-tall-double-text"));
    statistics->resize(560, 400);
    takePicture(fixture, *statistics, QStringLiteral("statistics-smallest-double-text"));
}

} // namespace ludarium::test
