#include "Services/Library/PlaylistRules.h"

#include "GameFactory.h"

#include <QRandomGenerator>
#include <algorithm>
#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

namespace {

GamePtr sample() {
    return makeGame(QStringLiteral("g"), QStringLiteral("Fjord Raiders"), QStringLiteral("MS-DOS"), [](Game &game) {
        game.genre = QStringLiteral("Action;Adventure");
        game.releaseYear = 1991;
        game.communityRating = 4.6; // no double is exactly that
        game.maxPlayers = 2;
        game.notes = "Needs a Joystick";
        game.isInstalled = true;
    });
}

} // namespace

struct RuleCase {
    const char *field;
    const char *comparison;
    const char *value; ///< nullptr: the rule has none
    bool holds;
};

class PlaylistRule : public testing::TestWithParam<RuleCase> {};

TEST_P(PlaylistRule, ComparesTheLowerCasedFieldOfTheGame) {
    const RuleCase &rule = GetParam();
    const PlaylistFilter filter{rule.value ? QString::fromUtf8(rule.value) : QString(), QString::fromUtf8(rule.field),
                                QString::fromUtf8(rule.comparison)};
    EXPECT_EQ(matchesFilter(*sample(), filter), rule.holds) << rule.field << ' ' << rule.comparison;
}

INSTANTIATE_TEST_SUITE_P(
    Rules, PlaylistRule,
    testing::Values(RuleCase{"Title", "EqualTo", "FJORD raiders", true}, RuleCase{"title", "Equals", "Fjord", false},
                    RuleCase{"Title", "NotEqualTo", "Fjord", true}, RuleCase{"Genre", "Contains", "advent", true},
                    RuleCase{"genres", "NotContains", "puzzle", true}, RuleCase{"Title", "Contains", nullptr, true},
                    RuleCase{"Title", "IsTrue", nullptr, true}, RuleCase{"Developer", "IsTrue", nullptr, false},
                    RuleCase{"Cooperative", "IsFalse", nullptr, true}, RuleCase{"coop", "Equals", "false", true},
                    RuleCase{"Year", "StartsWith", "199", true}, RuleCase{"ReleaseDate", "EndsWith", "91", true},
                    RuleCase{"CommunityRating", "Equals", "4.6", true}, RuleCase{"MaxPlayers", "EqualTo", "2", true},
                    RuleCase{"Installed", "IsTrue", nullptr, true}, RuleCase{"Favourite", "IsFalse", nullptr, true},
                    RuleCase{"Joystick", "IsTrue", nullptr, true}, RuleCase{"Lightgun", "IsTrue", nullptr, false},
                    RuleCase{"VideoType", "IsFalse", nullptr, true}, RuleCase{"Title", "Sounds like", "x", false},
                    // An empty text begins and ends every text, that of a missing field too.
                    RuleCase{"Developer", "StartsWith", nullptr, true}, RuleCase{"Series", "EndsWith", "", true},
                    RuleCase{"PlayMode", "StartsWith", "", true}, RuleCase{"MaxPlayers", "EndsWith", "", true}));

TEST(PlaylistFilters, FillOnlyDynamicPlaylistsAndNeedEveryRule) {
    Playlist fixed;
    fixed.gameIds = QStringList{QStringLiteral("kept")};
    Playlist everything;
    everything.autoPopulate = true;
    Playlist narrow = everything;
    narrow.filters = {{QStringLiteral("1991"), QStringLiteral("Year"), QStringLiteral("EqualTo")},
                      {QStringLiteral("Fjord"), QStringLiteral("Title"), QStringLiteral("Contains")}};
    Playlist unknown = everything;
    unknown.filters = {{QStringLiteral("x"), QStringLiteral("Title"), QStringLiteral("Between")}};
    const GameList games{sample(), makeGame(QStringLiteral("h"), QStringLiteral("Other"))};

    const QList<Playlist> filled = applyPlaylistFilters({fixed, everything, narrow, unknown}, games);

    EXPECT_EQ(filled[0].gameIds, QStringList{QStringLiteral("kept")});
    EXPECT_EQ(filled[1].gameIds, (QStringList{QStringLiteral("g"), QStringLiteral("h")}));
    EXPECT_EQ(filled[2].gameIds, QStringList{QStringLiteral("g")});
    EXPECT_TRUE(filled[3].gameIds.isEmpty());
}

TEST(PlaylistFilters, FindInABigLibraryWhatEachRuleFindsInOneGame) {
    QRandomGenerator random(7);
    const auto of = [&](const QStringList &texts) { return texts[random.bounded(texts.size())]; };
    const QStringList genres{u"Action"_s, u"Action; ÄRCADE"_s, u"Puzzle"_s, u""_s, QString(), u"Racing;Action"_s};
    const QStringList words{u"Fjord"_s, u"lightgun"_s, u"Ötzi"_s, u"raiders"_s};
    GameList games;
    for (int i = 0; i < 500; ++i)
        games.append(
            makeGame(QString::number(i), of(words) + u' ' + of(words), of({u"MS-DOS"_s, u"Arcade"_s}), [&](Game &game) {
                game.genre = of(genres);
                game.playMode = of(genres);
                game.notes = of(words).toUtf8();
                if (random.bounded(2) != 0)
                    game.releaseYear = 1990 + int(random.bounded(3));
                game.isFavorite = random.bounded(4) == 0;
                if (random.bounded(2) != 0)
                    game.communityRating = double(random.bounded(4)) / 2;
            }));
    const QStringList keys{u"Title"_s, u"Platform"_s, u"Genre"_s,    u"PlayMode"_s, u"Year"_s,
                           u"Notes"_s, u"Favorite"_s, u"LightGun"_s, u"Rating"_s,   u"Overview"_s};
    const QStringList comparisons{u"EqualTo"_s, u"NotEqualTo"_s, u"Contains"_s,   u"NotContains"_s,
                                  u"IsTrue"_s,  u"IsFalse"_s,    u"StartsWith"_s, u"EndsWith"_s};
    const QStringList values{u"action"_s, u"äRCADE"_s, u"MS-DOS"_s, u"1991"_s, u""_s, u"ö"_s, u"true"_s, u"1.5"_s};
    QList<Playlist> playlists;
    for (int i = 0; i < 300; ++i) {
        Playlist playlist;
        playlist.autoPopulate = true;
        for (int rules = 1 + int(random.bounded(3)); rules > 0; --rules)
            playlist.filters.append({of(values), of(keys), of(comparisons)});
        playlists.append(playlist);
    }
    const QList<Playlist> filled = applyPlaylistFilters(playlists, games);
    qsizetype found = 0;
    for (const Playlist &playlist : filled) {
        QStringList expected;
        for (const GamePtr &game : games)
            if (std::all_of(playlist.filters.begin(), playlist.filters.end(),
                            [&](const PlaylistFilter &filter) { return matchesFilter(*game, filter); }))
                expected.append(game->id);
        ASSERT_EQ(playlist.gameIds, expected) << playlist.filters[0].fieldKey.toStdString();
        found += expected.size();
    }
    EXPECT_GT(found, 1'000);
}

} // namespace ludarium::test
