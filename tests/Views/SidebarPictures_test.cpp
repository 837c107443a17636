#include "Services/Library/GameLibrary.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"
#include "support/Picture.h"

#include <QQuickItem>
#include <QTest>
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

} // namespace

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
