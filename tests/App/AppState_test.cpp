#include "App/AppState.h"

#include "App/LaunchDatabases.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Library/GameLibrary.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

class AppStateTest : public testing::Test {
  protected:
    AppStateTest() : emulators(host), state(host, emulators, LaunchDatabases(host)) {
        const auto game = [](const char *id, const char *title, const char *genre, const char *developer, int year) {
            return u"<Game><ID>%1</ID><Title>%2</Title><Platform>ScummVM</Platform><Genre>%3</Genre>"
                   "<Developer>%4</Developer><Publisher>%4</Publisher><ReleaseDate>%5</ReleaseDate></Game>"_s
                       .arg(QString::fromUtf8(id), QString::fromUtf8(title), QString::fromUtf8(genre),
                            QString::fromUtf8(developer))
                       .arg(year)
                       .toUtf8();
        };
        host.put(u"/c/Data/Platforms/ScummVM.xml"_s, "<LaunchBox>" + game("a", "Loom", "Adventure", "One", 1990) +
                                                         game("b", "Loom (CD)", "Adventure", "Two", 1992) +
                                                         game("c", "Zak", "Puzzle", "Two", 1988) + "</LaunchBox>");
        host.put(u"/c/Data/Playlists/P.xml"_s,
                 "<LaunchBox><Playlist><PlaylistId>p</PlaylistId><Name>P</Name></Playlist>"
                 "<PlaylistGame><GameId>c</GameId><PlaylistId>p</PlaylistId></PlaylistGame></LaunchBox>");
        state.setCollectionPath(host.root() + u"/c"_s);
        wait([&] { return !state.gameLibrary().isLoading(); });
    }

    template<typename Condition>
    void wait(const Condition &condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    std::string shown() const {
        std::string ids;
        for (const GamePtr &game : state.filteredGames())
            ids += game->id.toStdString();
        return ids;
    }

    test::TestHost host;
    EmulatorManager emulators;
    AppState state;
};

} // namespace

TEST_F(AppStateTest, NarrowsByEachFilterAndClearsThemAll) {
    ASSERT_EQ(shown(), "abc");
    state.setSortOrder(SortOrder::year);
    state.setSelectedGameId(u"a"_s);
    state.gameLibrary().toggleFavorite(u"b"_s);
    state.gameLibrary().recordPlay(u"c"_s, 0);
    const std::pair<std::function<void()>, const char *> filters[]{
        {[&] { state.setSelectedPlatform(u"MS-DOS"_s); }, ""},
        {[&] { state.setSelectedPlaylist(u"p"_s); }, "c"},
        {[&] { state.setSelectedSmartCollection(u"90s-classics"_s); }, "ab"},
        {[&] { state.setSelectedGenre(u"Puzzle"_s); }, "c"},
        {[&] { state.setSelectedDeveloper(u"One"_s); }, "a"},
        {[&] { state.setSelectedPublisher(u"Two"_s); }, "cb"},
        {[&] { state.setSelectedYear(1992); }, "b"},
        {[&] { state.setShowFavoritesOnly(true); }, "b"},
        {[&] { state.setShowInstalledOnly(true); }, ""},
        {[&] { state.setShowRecentlyPlayed(true); }, "c"},
    };
    for (const auto &[set, wanted] : filters) {
        set();
        EXPECT_EQ(shown(), wanted);
        state.clearFilters();
        EXPECT_EQ(shown(), "cab");
    }
    EXPECT_EQ(state.selectedGameId(), u"a"_s);
    EXPECT_EQ(state.filteredGameGroups().size(), 2);
}

TEST_F(AppStateTest, SearchesAfterAPauseAndForgetsATextThatWasDeletedBefore) {
    int changes = 0;
    QObject::connect(&state, &AppState::filteredGamesChanged, &state, [&] { ++changes; });
    state.setSearchText(u"z"_s);
    state.setSearchText(u"za"_s);
    state.setSearchText({});
    QElapsedTimer timer;
    timer.start();
    wait([&] { return timer.elapsed() > 250; });
    EXPECT_EQ(changes, 0);
    state.setSearchText(u"ZAK"_s);
    EXPECT_EQ(shown(), "abc");
    wait([&] { return changes > 0; });
    EXPECT_EQ(shown(), "c");
    state.clearFilters();
    EXPECT_EQ(state.searchText(), u"ZAK"_s);
    EXPECT_EQ(shown(), "c");
    state.setSearchText({});
    EXPECT_EQ(shown(), "abc") << "an emptied field takes effect at once";
}

} // namespace ludarium
