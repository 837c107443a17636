#include "Services/Library/MetadataIndexes.h"

#include "GameFactory.h"

#include <gtest/gtest.h>

namespace ludarium::test {

TEST(MetadataIndexes, SplitGenresAndKeepOtherFieldsWhole) {
    const auto with = [](const char *id, const char *genre, const char *developer, int year) {
        return makeGame(QString::fromUtf8(id), QStringLiteral("T"), QStringLiteral("MS-DOS"), [=](Game &game) {
            game.genre = QString::fromUtf8(genre);
            game.developer = QString::fromUtf8(developer);
            game.releaseYear = year;
        });
    };
    const MetadataIndexes indexes =
        MetadataIndexes::build({with("a", "Action;Adventure", "Zed; Inc", 1993), with("b", "Action; ", "", 1984),
                                makeGame(QStringLiteral("c"), QStringLiteral("T"))});
    EXPECT_EQ(indexes.genres, (QStringList{QString(), QStringLiteral("Action"), QStringLiteral("Adventure")}));
    EXPECT_EQ(indexes.developers, QStringList{QStringLiteral("Zed; Inc")});
    EXPECT_TRUE(indexes.publishers.isEmpty());
    EXPECT_EQ(indexes.years, (QList<int>{1984, 1993}));
}

TEST(MetadataIndexes, FindEveryGenreOfManyTexts) {
    QStringList wanted;
    for (int i = 10; i < 60; ++i)
        wanted.append(QStringLiteral("Genre %1").arg(i));
    // Each new genre comes behind texts of pieces that are known already, in the same length and number.
    GameList games;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        for (const QString &genre : {wanted[i], wanted[i] + u';' + wanted[i / 2], wanted[i / 3] + u';' + wanted[i / 2]})
            games.append(makeGame(QStringLiteral("%1 %2").arg(i).arg(genre), QStringLiteral("T"),
                                  QStringLiteral("MS-DOS"), [&](Game &game) { game.genre = genre; }));
    std::reverse(games.begin(), games.end());
    EXPECT_EQ(MetadataIndexes::build(games).genres, wanted);
}

struct PlatformCase {
    const char *name;
    bool anyGame;
    bool playableGame;
    bool kept;
};

class PlayablePlatform : public testing::TestWithParam<PlatformCase> {};

TEST_P(PlayablePlatform, StaysByTheFirstRuleThatApplies) {
    const PlatformCase &row = GetParam();
    const QString name = QString::fromUtf8(row.name);
    GameList games;
    if (row.anyGame)
        games.append(makeGame(QStringLiteral("g"), QStringLiteral("T"), name,
                              [&](Game &game) { game.isDownloadable = row.playableGame; }));
    EXPECT_EQ(platformsWithPlayableGames({Platform::named(name, QStringLiteral("Computer"))}, games).size(), row.kept)
        << row.name;
}

INSTANTIATE_TEST_SUITE_P(
    Rules, PlayablePlatform,
    testing::Values(PlatformCase{"MS-DOS", true, true, true}, PlatformCase{"MS-DOS", true, false, false},
                    PlatformCase{"Windows 9x", true, true, false}, PlatformCase{"Sega Videos", false, false, true},
                    PlatformCase{"ScummVM", true, false, true}, PlatformCase{"ScummVM", false, false, false},
                    PlatformCase{"My DREAMM Set", true, false, true}, PlatformCase{"Sega Genesis", true, false, true},
                    PlatformCase{"sega genesis", true, false, false}));

} // namespace ludarium::test
