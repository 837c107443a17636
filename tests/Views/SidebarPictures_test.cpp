#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryCache.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"
#include "support/Picture.h"

#include <QQuickItem>
#include <QTest>
#include <ctime>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

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

/// 1,000 playlists, one in three nested below the one before it, on 1,000 platforms of one game each.
CachedCollectionData hugeSidebar(const QString &folder, const QDateTime &now) {
    CachedCollectionData data;
    data.collectionPath = folder;
    data.cacheDate = LibraryCache::toCacheDate(now);
    const QStringList names{QStringLiteral("Rainy Evenings"),
                            QString(300, u'W'),
                            QString::fromUtf8("ألعاب المغامرات القديمة"),
                            QString::fromUtf8("🎲 Dice & 🃏 cards 🎮"),
                            QStringLiteral("One\ntwo  three"),
                            QString()};
    for (int i = 0; i < 1000; ++i) {
        auto game = std::make_shared<Game>();
        game->id = QStringLiteral("game-%1").arg(i);
        game->title = QStringLiteral("Game %1").arg(i);
        game->platform = QStringLiteral("Dreamm machine %1").arg(i);
        game->isInstalled = true;
        data.games.append(game);
        data.platforms.append(Platform::named(game->platform, QStringLiteral("Computer")));
        Playlist list;
        list.id = QStringLiteral("list-%1").arg(i);
        list.name = names[i % names.size()] + QStringLiteral(" %1").arg(i);
        for (int j = 0; j <= i; ++j)
            list.gameIds.append(QStringLiteral("game-%1").arg(j));
        if (i % 9 < 7)
            list.nestedPlaylistIds.append(QStringLiteral("list-%1").arg(i + 1));
        data.playlists.append(list);
    }
    return data;
}

double processorMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1000 + double(time.tv_nsec) / 1e6;
}

} // namespace

TEST(Pictures, OfASidebarOfThousandsOfRows) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window({900, 600});
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
    const QString folder = fixture.machine.scratch();
    LibraryCache(fixture.host.paths).save(hugeSidebar(folder, fixture.machine.clock.now()));
    for (int i = 0; i < 60; ++i) {
        const QUuid group = fixture.state.platformGroups().createGroup(QStringLiteral("Group %1").arg(i));
        for (int j = 0; j < 5; ++j)
            fixture.state.platformGroups().addPlatform(QStringLiteral("Dreamm machine %1").arg(i * 5 + j), group);
    }
    fixture.state.setCollectionPath(folder);
    SidebarModel &sidebar = *fixture.desktop.sidebar();
    ASSERT_TRUE(waitUntil([&] { return sidebar.platformCount() == 1000 && sidebar.count() > 2000; }));
    const int playlists = sidebar.rowStartingWith(QStringLiteral("Playlists"), 0);
    ASSERT_TRUE(
        waitUntil([&] { return sidebar.data(sidebar.index(playlists + 1), SidebarModel::gamesRole).toInt() == 1; }));
    sidebar.select(playlists + 8);
    takePicture(fixture, window, QStringLiteral("sidebar-thousands"));

    // Processor time of this thread, so that others at work do not count. Far below what a letter may take.
    const auto worst = [&](const QStringList &steps, const auto &step) {
        double longest = 0;
        for (const QString &text : steps) {
            const double before = processorMilliseconds();
            step(text);
            QCoreApplication::processEvents();
            const double spent = processorMilliseconds() - before;
            RecordProperty("milliseconds " + text.toStdString(), std::to_string(spent));
            longest = std::max(longest, spent);
        }
        return longest;
    };
    const QStringList typed{QStringLiteral("m"),
                            QStringLiteral("ma"),
                            QStringLiteral("mac"),
                            QStringLiteral("wwww"),
                            QStringLiteral("xyz"),
                            QStringLiteral("9"),
                            QStringLiteral("99"),
                            QStringLiteral("999"),
                            QStringLiteral("g"),
                            QStringLiteral("gro"),
                            QString()};
    EXPECT_LT(worst(typed, [&](const QString &text) { sidebar.setFilter(text); }), 150);
    EXPECT_LT(worst({QStringLiteral("game-1"), QStringLiteral("game-2")},
                    [&](const QString &id) { fixture.state.gameLibrary().toggleFavorite(id); }),
              150);
    sidebar.setFilter(QStringLiteral("machine 7"));
    fixture.picture(window);
    QTest::mousePress(&window, Qt::RightButton, {}, rowPlace(window, QStringLiteral("Dreamm machine 7")));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right})
        QTest::keyClick(&window, key);
    takePicture(fixture, window, QStringLiteral("sidebar-thousands-groups-menu"));
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_Escape);
    sidebar.setFilter(QStringLiteral("99"));
    takePicture(fixture, window, QStringLiteral("sidebar-thousands-filtered"));
    sidebar.setFilter({});
    fixture.desktop.appearance()->setTextScale(2);
    takePicture(fixture, window, QStringLiteral("sidebar-thousands-double-text"));
}

TEST(Pictures, OfTheSidebar) {
    DesktopFixture fixture;
    QQuickWindow &window = fixture.window();
    fixture.desktop.start()->begin();
    ASSERT_TRUE(waitUntil([&] { return !fixture.desktop.start()->isVisible(); }));
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
    takePicture(fixture, window, QStringLiteral("sidebar-groups"));

    window.resize(1280, 800);
    sidebar.setFilter(QStringLiteral("ad"));
    takePicture(fixture, window, QStringLiteral("sidebar-filtered"));
    sidebar.setFilter(QStringLiteral("nothing like it"));
    takePicture(fixture, window, QStringLiteral("sidebar-filtered-empty"));
    sidebar.setFilter({});
    sidebar.setAllExpanded(false);
    takePicture(fixture, window, QStringLiteral("sidebar-collapsed"));
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
    takePicture(fixture, window, QStringLiteral("sidebar-drag"));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, end);
    EXPECT_FALSE(platforms.groupOf(QStringLiteral("Windows 3x")).isEmpty());

    fixture.picture(window);
    press("ScummVM", Qt::RightButton);
    takePicture(fixture, window, QStringLiteral("sidebar-menu-platform"));
    QTest::keyClick(&window, Qt::Key_Escape);
    press("Home Computers", Qt::RightButton);
    takePicture(fixture, window, QStringLiteral("sidebar-menu-group"));
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_F2);
    takePicture(fixture, window, QStringLiteral("sidebar-group-name"));
    QTest::keyClick(&window, Qt::Key_Escape);
    platforms.deletePlatform(QStringLiteral("ScummVM"));
    takePicture(fixture, window, QStringLiteral("sidebar-delete-platform"));
    fixture.dialogs.dismiss();
    fixture.desktop.appearance()->setTextScale(2);
    takePicture(fixture, window, QStringLiteral("sidebar-double-text"));
    sidebar.setShown(false);
    takePicture(fixture, window, QStringLiteral("sidebar-hidden"));
}

} // namespace ludarium::test
