#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Services/Library/GameLibrary.h"
#include "Views/CoverImageProvider.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"
#include "support/Picture.h"

#include <QTest>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

void take(DesktopFixture &fixture, QQuickWindow &window, const QString &name) {
    takePicture(fixture, window, name);
}

void endSplash(DesktopFixture &fixture) {
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
}

void call(QQuickWindow &window, const char *function) {
    ASSERT_TRUE(QMetaObject::invokeMethod(&window, function));
}

Alert alert(const QString &title, const QString &text, const QStringList &buttons, Alert::Style style) {
    return {title, text, buttons, style};
}

} // namespace

TEST(Pictures, OfTheStatesBeforeACollectionIsThere) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    take(fixture, window, QStringLiteral("splash"));
    endSplash(fixture);
    take(fixture, window, QStringLiteral("no-collection"));

    fixture.state.setCollectionPath(fixture.machine.scratch());
    ASSERT_TRUE(waitUntil([&] { return fixture.dialogs.isActive(); }));
    take(fixture, window, QStringLiteral("load-error-dialog"));
    fixture.dialogs.dismiss();
    take(fixture, window, QStringLiteral("load-error"));
}

TEST(Pictures, OfGridAndListWithDetails) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    take(fixture, window, QStringLiteral("grid"));
    Browse &browse = *fixture.desktop.browse();
    ASSERT_TRUE(browse.selectTitle(QStringLiteral("Copper Harbor")));
    take(fixture, window, QStringLiteral("grid-details"));
    window.resize(900, 600);
    take(fixture, window, QStringLiteral("grid-smallest"));
    window.resize(1280, 800);
    browse.setViewMode(QStringLiteral("List"));
    take(fixture, window, QStringLiteral("list-details"));
    browse.setViewMode(QStringLiteral("Grid"));
    browse.setSearchText(QStringLiteral("no such game"));
    ASSERT_TRUE(waitUntil([&] { return browse.games()->count() == 0; }));
    take(fixture, window, QStringLiteral("search-without-result"));
    browse.setSearchText(QString());
    fixture.desktop.appearance()->setTextScale(2);
    take(fixture, window, QStringLiteral("grid-double-text"));
}

TEST(Pictures, OfTheSixViews) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.loadVariants());
    GameLibrary &library = fixture.state.gameLibrary();
    for (int i = 0; i < library.games().size(); ++i) {
        const QString id = library.games()[i]->id;
        GameStatus status;
        status.isInstalled = i % 4 == 0;
        status.isCompressed = i % 4 == 1;
        status.isDownloadable = i % 4 == 2;
        library.setGameStatus(id, status);
        if (i % 5 == 0)
            library.toggleFavorite(id);
        if (i % 6 == 0)
            library.recordPlay(id, 500.0 * i);
    }
    Browse &browse = *fixture.desktop.browse();
    ASSERT_TRUE(browse.selectTitle(QStringLiteral("Amber Quarry (CD)")));
    for (const char *mode : {"List", "Grid", "Coverflow"})
        for (const bool grouped : {false, true}) {
            browse.setGrouped(grouped);
            browse.setViewMode(QLatin1StringView(mode));
            const QString name =
                QStringLiteral("view-%1%2")
                    .arg(QString(QLatin1StringView(mode)).toLower(), grouped ? QStringLiteral("-groups") : QString());
            take(fixture, window, name);
            if (grouped)
                continue;
            window.resize(900, 600);
            take(fixture, window, name + QStringLiteral("-smallest"));
            fixture.desktop.appearance()->setTextScale(2);
            take(fixture, window, name + QStringLiteral("-double-text"));
            fixture.desktop.appearance()->setTextScale(1);
            window.resize(1280, 800);
        }
    browse.setViewMode(QStringLiteral("Grid"));
    QTest::keyClick(&window, Qt::Key_Menu);
    take(fixture, window, QStringLiteral("view-context-menu"));
    QTest::keyClick(&window, Qt::Key_Escape);
    for (QObject *popup : window.findChildren<QObject *>())
        if (QLatin1StringView(popup->metaObject()->className()).startsWith(QLatin1StringView("FilterPopup"))) {
            ASSERT_TRUE(QMetaObject::invokeMethod(popup, "open"));
            take(fixture, window, QStringLiteral("view-filter"));
            ASSERT_TRUE(QMetaObject::invokeMethod(popup, "close"));
        }
    browse.facets()->set(QStringLiteral("developer"), QStringLiteral("Blue Anvil"));
    browse.facets()->set(QStringLiteral("year"), QStringLiteral("1999"));
    take(fixture, window, QStringLiteral("view-grid-facets-and-hard-titles"));
    browse.setViewMode(QStringLiteral("List"));
    take(fixture, window, QStringLiteral("view-list-hard-titles"));
}

TEST(Pictures, OfEveryTheme) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    ASSERT_TRUE(fixture.desktop.browse()->selectTitle(QStringLiteral("Hollow Orchard")));
    for (const char *theme :
         {"System Dark", "System Light", "Retro Purple", "Ocean Blue", "Forest Green", "Midnight Glass"}) {
        const QString name = QLatin1StringView(theme);
        ASSERT_TRUE(fixture.desktop.appearance()->showTheme(name));
        take(fixture, window, QStringLiteral("theme-") + name.toLower().replace(QLatin1Char(' '), QLatin1Char('-')));
    }
}

TEST(Pictures, OfDialogsLogAndAbout) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    const auto ask = [&](const Alert &question) {
        spawn([](QmlDialogs &dialogs, Alert asked) -> QCoro::Task<> { co_await dialogs.ask(asked); }(fixture.dialogs,
                                                                                                     question),
              "a test's question");
    };
    ask(alert(QStringLiteral("Read-Only Collection"),
              QStringLiteral("The collection at \"eXo\" is on a read-only volume. Games may not launch correctly "
                             "because the app needs to write configuration files.\n\nPlease copy the collection to a "
                             "writable drive, or remount the volume with write access."),
              {QStringLiteral("Continue Anyway"), QStringLiteral("Cancel")}, Alert::Style::Warning));
    take(fixture, window, QStringLiteral("dialog-two-buttons"));
    fixture.dialogs.dismiss();
    ask(alert(QStringLiteral("Select Version"), QStringLiteral("Choose which version of Copper Harbor to play:"),
              {QStringLiteral("Floppy, English"), QStringLiteral("CD-ROM, English, with speech"),
               QStringLiteral("CD-ROM, German"), QStringLiteral("Cancel")},
              Alert::Style::Informational));
    take(fixture, window, QStringLiteral("dialog-choice"));
    fixture.dialogs.dismiss();

    fixture.desktop.thumbnails()->start();
    take(fixture, window, QStringLiteral("caching-thumbnails"));
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.thumbnails()->isRunning(); }));

    call(window, "showAbout");
    take(fixture, window, QStringLiteral("about"));
    Q_EMIT fixture.desktop.toast(QStringLiteral("Log copied to the clipboard"));
    take(fixture, window, QStringLiteral("about-and-toast"));

    Log::warning(QStringLiteral("A folder of covers could not be listed"));
    Log::error(QStringLiteral("The emulator ended with status 1"));
    call(window, "showLogs");
    auto *logs = window.property("logWindow").value<QQuickWindow *>();
    ASSERT_NE(logs, nullptr);
    ASSERT_TRUE(waitUntil([&] { return fixture.desktop.log()->count() > 2; }));
    take(fixture, *logs, QStringLiteral("logs"));
}

} // namespace ludarium::test
