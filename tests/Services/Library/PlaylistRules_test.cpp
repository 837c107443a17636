#include "Services/Library/PlaylistRules.h"

#include "GameFactory.h"

#include <gtest/gtest.h>

namespace ludarium::test {

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
                    RuleCase{"VideoType", "IsFalse", nullptr, true}, RuleCase{"Title", "Sounds like", "x", false}));

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

} // namespace ludarium::test
