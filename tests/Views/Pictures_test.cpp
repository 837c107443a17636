#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Services/Library/GameLibrary.h"
#include "Views/CoverImageProvider.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QDir>
#include <QQuickItem>
#include <QSet>
#include <QTest>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

/// Draws the window into build/screenshots and says whether it shows more than a plain area.
void take(DesktopFixture &fixture, QQuickWindow &window, const QString &name) {
    const QImage image = fixture.picture(window);
    const QString folder = QStringLiteral(LUDARIUM_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    ASSERT_TRUE(image.save(folder + QLatin1Char('/') + name + QStringLiteral(".png")));
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            colors.insert(image.pixel(x, y));
    EXPECT_GT(colors.size(), 12) << qPrintable(name) << " is all but empty";
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

/// The visible row of the sidebar of this name below `item`; rows have no other parent than the one they are drawn in.
QQuickItem *sidebarRow(QQuickItem *item, const QString &name) {
    if (item->property("rowId").isValid() && item->property("name") == name && item->isVisible())
        return item;
    for (QQuickItem *child : item->childItems())
        if (QQuickItem *found = sidebarRow(child, name))
            return found;
    return nullptr;
}

/// Where that row is in the window.
QPoint rowPlace(QQuickWindow &window, const QString &name) {
    const QQuickItem *row = sidebarRow(window.contentItem(), name);
    return row ? row->mapToScene({100, row->height() / 2}).toPoint() : QPoint();
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

TEST(Pictures, OfTheSidebar) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    endSplash(fixture);
    ASSERT_TRUE(fixture.load());
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    PlatformCommands &platforms = *fixture.desktop.platforms();
    const auto section = [&](const char *title) { return sidebar.rowStartingWith(QLatin1StringView(title), 0); };
    sidebar.setAllExpanded(true);
    window.resize(1280, 1400);
    platforms.createGroup(QStringLiteral("Home Computers"), QStringLiteral("Apple IIGS"));
    platforms.createGroup(QStringLiteral("Adventure machines of the nineties and later"), QStringLiteral("ScummVM"));
    platforms.createGroup(
        QStringLiteral("\u0623\u062c\u0647\u0632\u0629 \u0627\u0644\u0623\u0644\u0639\u0627\u0628 "
                       "\u0627\u0644\u0642\u062f\u064a\u0645\u0629 \u0648\u0627\u0644\u062d\u062f\u064a\u062b\u0629"),
        {});
    sidebar.select(section("Apple IIGS"));
    fixture.state.gameLibrary().toggleFavorite(QStringLiteral("fixture-1"));
    take(fixture, window, QStringLiteral("sidebar-groups"));

    window.resize(1280, 800);
    sidebar.setFilter(QStringLiteral("ad"));
    take(fixture, window, QStringLiteral("sidebar-filtered"));
    sidebar.setFilter(QStringLiteral("nothing like it"));
    take(fixture, window, QStringLiteral("sidebar-filtered-empty"));
    sidebar.setFilter({});
    sidebar.setAllExpanded(false);
    take(fixture, window, QStringLiteral("sidebar-collapsed"));
    sidebar.setExpanded(section("Platforms"), true);
    fixture.picture(window);

    const auto press = [&](const char *name, Qt::MouseButton button) {
        const QPoint place = rowPlace(window, QLatin1StringView(name));
        QTest::mousePress(&window, button, {}, place);
        return place;
    };
    const QPoint end = rowPlace(window, QStringLiteral("Home Computers"));
    const QPoint start = press("Windows 3x", Qt::LeftButton);
    QTest::mouseMove(&window, start + QPoint(20, 0));
    QTest::mouseMove(&window, end);
    take(fixture, window, QStringLiteral("sidebar-drag"));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, end);
    EXPECT_FALSE(platforms.groupOf(QStringLiteral("Windows 3x")).isEmpty());

    press("ScummVM", Qt::RightButton);
    take(fixture, window, QStringLiteral("sidebar-menu-platform"));
    QTest::keyClick(&window, Qt::Key_Escape);
    press("Home Computers", Qt::RightButton);
    take(fixture, window, QStringLiteral("sidebar-menu-group"));
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_F2);
    take(fixture, window, QStringLiteral("sidebar-group-name"));
    QTest::keyClick(&window, Qt::Key_Escape);
    platforms.deletePlatform(QStringLiteral("ScummVM"));
    take(fixture, window, QStringLiteral("sidebar-delete-platform"));
    fixture.dialogs.dismiss();
    fixture.desktop.appearance()->setTextScale(2);
    take(fixture, window, QStringLiteral("sidebar-double-text"));
    sidebar.setShown(false);
    take(fixture, window, QStringLiteral("sidebar-hidden"));
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
