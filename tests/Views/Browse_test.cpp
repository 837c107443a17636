#include "App/LaunchDatabases.h"
#include "Services/Library/GameLibrary.h"
#include "Views/CoverStore.h"
#include "Views/GridGeometry.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

GamePtr game(const QString &id, const QString &title) {
    auto made = std::make_shared<Game>();
    made->id = id;
    made->title = title;
    made->platform = QStringLiteral("MS-DOS");
    return made;
}

GameList games(int count) {
    GameList list;
    for (int i = 0; i < count; ++i)
        list.append(game(QString::number(i), QStringLiteral("Game %1").arg(i)));
    return list;
}

} // namespace

TEST(GridGeometry, FitsAsManyColumnsAsTheMinimumWidthAllows) {
    struct Case {
        double width;
        GridSize size;
        int columns;
    };
    for (const auto &[width, size, columns] : {
             Case{800, GridSize::medium, 4},
             Case{0, GridSize::medium, 4},
             Case{0, GridSize::small, 5},
             Case{690, GridSize::medium, 3},
             Case{698, GridSize::medium, 1},
             Case{1280, GridSize::extraLarge, 4},
             Case{100, GridSize::large, 1},
         })
        EXPECT_EQ(width > 0 ? calculateActualColumns(width, size) : calculateEstimatedColumns(size), columns) << width;
}

TEST(GridGeometry, NeverGivesTheGridAWidthAtWhichKeysAndCellsDisagree) {
    for (const GridSize size : {GridSize::small, GridSize::medium, GridSize::large, GridSize::extraLarge})
        for (int available = 200; available < 3000; ++available) {
            const double width = gridWidth(available, size);
            const int columns = calculateActualColumns(width, size);
            ASSERT_EQ(fittingColumns(width, size), columns) << available;
            ASSERT_EQ(fittingColumns(available, size), columns) << available;
            const double cell = (width - 32 - 16 * (columns - 1)) / columns;
            ASSERT_LE(cell, cellWidths(size).maximum) << available;
            ASSERT_GE(cell, std::min(available - 32, cellWidths(size).minimum)) << available;
        }
}

TEST(GridGeometry, StepsStayInsideTheList) {
    struct Case {
        Step step;
        int current;
        int count;
        int columns;
        int wanted;
    };
    for (const auto &[step, current, count, columns, wanted] : {
             Case{Step::next, -1, 10, 4, 0},
             Case{Step::up, -1, 10, 4, 0},
             Case{Step::next, -1, 0, 4, -1},
             Case{Step::next, 9, 10, 4, 9},
             Case{Step::previous, 0, 10, 4, 0},
             Case{Step::up, 3, 10, 4, 3},
             Case{Step::up, 4, 10, 4, 0},
             Case{Step::down, 5, 10, 4, 9},
             Case{Step::down, 6, 10, 4, 6},
             Case{Step::next, 50, 10, 4, 0},
         })
        EXPECT_EQ(stepRow(step, current, count, columns), wanted) << current << " of " << count;
}

TEST(GameListModel, AnnouncesOnlyTheRowsWhoseRecordsChanged) {
    GameListModel model(std::make_shared<CoverStore>());
    GameList list = games(10);
    model.setGames(list);
    QSignalSpy resets(&model, &GameListModel::modelReset);
    QSignalSpy changes(&model, &GameListModel::dataChanged);

    list[3] = game(QStringLiteral("3"), QStringLiteral("Renamed"));
    list[4] = game(QStringLiteral("4"), QStringLiteral("Renamed too"));
    list[9] = game(QStringLiteral("9"), QStringLiteral("The last"));
    model.setGames(list);
    EXPECT_EQ(resets.count(), 0);
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 3);
    EXPECT_EQ(changes[0][1].toModelIndex().row(), 4);
    EXPECT_EQ(changes[1][0].toModelIndex().row(), 9);
    EXPECT_EQ(model.data(model.index(3), GameListModel::titleRole).toString(), QStringLiteral("Renamed"));

    model.setGames(list);
    EXPECT_EQ(changes.count(), 2) << "the same records are no change";
    list.removeFirst();
    model.setGames(list);
    EXPECT_EQ(resets.count(), 1);
}

TEST(GameListModel, HasNothingOutsideTheList) {
    GameListModel model(std::make_shared<CoverStore>());
    model.setGames(games(2));
    EXPECT_EQ(model.game(-1), nullptr);
    EXPECT_EQ(model.game(2), nullptr);
    EXPECT_EQ(model.rowOf(QStringLiteral("1")), 1);
    EXPECT_EQ(model.rowOf(QStringLiteral("none")), -1);
    EXPECT_FALSE(model.data(model.index(2), GameListModel::titleRole).isValid());
}

TEST(Browse, KeepsTheSelectedGameThroughSearchAndOrder) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    Browse &browse = *fixture.desktop.browse();
    ASSERT_TRUE(browse.selectTitle(QStringLiteral("Copper Harbor")));
    const int row = browse.currentRow();
    browse.setSearchText(QStringLiteral("COPPER"));
    EXPECT_EQ(browse.games()->count(), 36) << "a search waits for a pause";
    ASSERT_TRUE(waitUntil([&] { return browse.games()->count() == 6; }));
    EXPECT_EQ(browse.games()->game(browse.currentRow())->title, QStringLiteral("Copper Harbor"));
    EXPECT_TRUE(browse.isFiltered());
    browse.setSearchText(QStringLiteral("lantern"));
    ASSERT_TRUE(waitUntil([&] { return browse.currentRow() == -1; }));
    EXPECT_EQ(fixture.desktop.detail()->title(), QStringLiteral("Copper Harbor"));
    browse.setSearchText({});
    EXPECT_EQ(browse.currentRow(), row) << "an emptied field takes effect at once";
    EXPECT_FALSE(browse.isFiltered());
}

TEST(Browse, ADoubleClickMeansTheGameOfItsFirstClick) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    Browse &browse = *fixture.desktop.browse();
    browse.click(3);
    const QString clicked = fixture.state.selectedGameId();
    EXPECT_TRUE(browse.isClicking());
    browse.setSortOrder(QStringLiteral("Year")); // whatever moves the rows meanwhile
    EXPECT_TRUE(browse.doubleClick(3));
    EXPECT_EQ(fixture.state.selectedGameId(), clicked);
    QSignalSpy settled(&browse, &Browse::clickingChanged);
    ASSERT_TRUE(waitUntil([&] { return !browse.isClicking(); }));
    EXPECT_EQ(settled.count(), 1) << "nobody is told that things may move again";
    // The first of these two clicks was on something that is no game.
    EXPECT_FALSE(browse.doubleClick(5));
    EXPECT_EQ(browse.currentRow(), 5);
}

TEST(Browse, KeepsTheSearchTextOnEveryWayToAPlace) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    Browse &browse = *fixture.desktop.browse();
    GameDetail &detail = *fixture.desktop.detail();
    GameCommands &game = *fixture.desktop.game();
    ASSERT_TRUE(browse.selectTitle(QStringLiteral("Copper Harbor")));
    const auto sidebarRow = [&] {
        SidebarModel &sidebar = *fixture.desktop.sidebar();
        for (int row = 0; row < sidebar.rowCount(); ++row)
            if (sidebar.data(sidebar.index(row), SidebarModel::kindRole).toString() == QStringLiteral("platform"))
                sidebar.select(row);
    };
    const std::pair<const char *, std::function<void()>> ways[] = {
        {"sidebar", sidebarRow},
        {"chip of the platform", [&] { detail.narrowTo(QStringLiteral("platform"), game.platform()); }},
        {"chip of the developer", [&] { detail.narrowTo(QStringLiteral("developer"), game.developer()); }},
        {"menu, platform", [&] { game.showPlatform(); }},
        {"menu, developer", [&] { game.showDeveloper(); }}};
    browse.setSearchText(QStringLiteral("harbor"));
    for (const auto &[name, go] : ways) {
        browse.clearFilters();
        browse.showRecentlyPlayed();
        go();
        EXPECT_EQ(browse.searchText(), QStringLiteral("harbor")) << name;
        EXPECT_FALSE(fixture.state.query().recentlyPlayed) << name;
        EXPECT_EQ(fixture.state.query().platform.isEmpty(), fixture.state.query().developer != QString()) << name;
    }
    browse.clearFilters();
    browse.showRecentlyPlayed();
    browse.showFavorites();
    EXPECT_EQ(browse.title(), QStringLiteral("Favorites"));
}

TEST(Browse, WritesEachViewSettingAndIgnoresUnknownTexts) {
    DesktopFixture fixture;
    Browse &browse = *fixture.desktop.browse();
    QSignalSpy changes(&browse, &Browse::viewSettingsChanged);
    browse.setViewMode(QStringLiteral("Mosaic"));
    browse.setGridSize(QStringLiteral("Huge"));
    browse.setSortOrder(QStringLiteral("Colour"));
    EXPECT_EQ(changes.count(), 0);
    browse.setViewMode(QStringLiteral("List"));
    browse.setGridSize(QStringLiteral("Extra Large"));
    browse.setSortOrder(QStringLiteral("Year"));
    EXPECT_EQ(fixture.machine.settings.rawValue(QStringLiteral("viewMode")).toString(), QStringLiteral("List"));
    EXPECT_EQ(fixture.machine.settings.rawValue(QStringLiteral("gridSize")).toString(), QStringLiteral("Extra Large"));
    EXPECT_EQ(fixture.machine.settings.rawValue(QStringLiteral("sortOrder")).toString(), QStringLiteral("Year"));
}

TEST(Browse, KeepsTheSelectedGameWhileVariantsAreGroupedAndNot) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.loadVariants());
    Browse &browse = *fixture.desktop.browse();
    browse.setGrouped(true);
    ASSERT_TRUE(browse.selectTitle(QStringLiteral("Amber Harbor")));
    const int row = browse.currentRow();
    EXPECT_EQ(browse.games()->variants(row).size(), 2);
    EXPECT_EQ(browse.games()->data(browse.games()->index(row), GameListModel::platformRole).toString(),
              QStringLiteral("DREAMM, MS-DOS"));
    browse.setCurrentRow(row);
    EXPECT_EQ(fixture.desktop.game()->platform(), QStringLiteral("MS-DOS")) << "the selected variant stays selected";
    browse.setGrouped(false);
    EXPECT_EQ(browse.games()->game(browse.currentRow())->title, QStringLiteral("Amber Harbor"));
    browse.setGrouped(true);
    fixture.state.setSelectedPlatform(QStringLiteral("DREAMM"));
    EXPECT_GE(browse.currentRow(), 0) << "its group is shown though it is not";
    ASSERT_TRUE(fixture.state.selectedGameGroup());
    EXPECT_EQ(fixture.state.selectedGameGroup()->normalizedTitle, QStringLiteral("amber harbor"));
    EXPECT_EQ(fixture.machine.settings.rawValue(QStringLiteral("groupDuplicateGames")).toBool(), true);
}

TEST(Browse, LogsEachRunOfTheColumnCountAndGuessesAnUnknownWidth) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.loadVariants());
    Browse &browse = *fixture.desktop.browse();
    browse.setGrouped(true);
    browse.setCurrentRow(0);
    browse.moveDown(800);
    EXPECT_EQ(browse.currentRow(), 4);
    browse.moveUp(0);
    EXPECT_EQ(browse.currentRow(), 0);
    EXPECT_TRUE(fixture.machine.log().contains(QStringLiteral("📐 Grid: width=800, maxItem=210, calculated columns=4")));
    EXPECT_TRUE(fixture.state.takeShouldScrollToSelection() == false) << "the request is taken once";
}

TEST(Browse, StartsAsAGridWhenTheStoredViewIsNotKnown) {
    TestHost machine;
    machine.settings.setRawValue(QStringLiteral("viewMode"), QStringLiteral("Mosaic"));
    machine.settings.setRawValue(QStringLiteral("tableColumnWidths"),
                                 QVariantMap{{QStringLiteral("title"), 9e9}, {QStringLiteral("year"), -4.0}});
    EmulatorManager emulators(machine.host());
    AppState state(machine.host(), emulators, LaunchDatabases(machine.host()));
    Browse browse(state, std::make_shared<CoverStore>());
    EXPECT_EQ(browse.viewMode(), QStringLiteral("Grid"));
    EXPECT_EQ(browse.table()->widths().first(), 1000);
    EXPECT_EQ(browse.table()->widths()[2], 60);
    browse.table()->setWidth(3, 222);
    browse.table()->save();
    EXPECT_EQ(TableLayout(machine.host()).widths()[3], 222);
}

TEST(FacetFilter, ListsTheValuesAndWhatHolds) {
    DesktopFixture fixture;
    ASSERT_TRUE(fixture.load());
    FacetFilter &facets = *fixture.desktop.browse()->facets();
    facets.setKind(QStringLiteral("developer"));
    facets.setSearch(QStringLiteral("AN"));
    EXPECT_EQ(facets.values(), QStringList{QStringLiteral("Blue Anvil")});
    QSignalSpy changes(&facets, &FacetFilter::activeChanged);
    facets.toggle(QStringLiteral("Blue Anvil"));
    facets.set(QStringLiteral("year"), QStringLiteral("1985"));
    EXPECT_EQ(changes.count(), 2);
    ASSERT_EQ(facets.active().size(), 2);
    EXPECT_EQ(facets.active()[0].toMap().value(QStringLiteral("text")).toString(), QStringLiteral("Blue Anvil"));
    facets.toggle(QStringLiteral("Blue Anvil"));
    EXPECT_EQ(facets.active().size(), 1);
    fixture.state.setSelectedPlatform(QStringLiteral("MS-DOS"));
    facets.clear();
    EXPECT_TRUE(facets.active().isEmpty());
    EXPECT_EQ(fixture.desktop.browse()->title(), QStringLiteral("MS-DOS")) << "the platform is no facet";
}

} // namespace ludarium::test
