#include "Services/Library/GameGroup.h"

#include "GameFactory.h"

#include <gtest/gtest.h>

namespace ludarium::test {

struct NormalizeCase {
    const char *title;
    const char *normalized;
};

class NormalizedTitle : public testing::TestWithParam<NormalizeCase> {};

TEST_P(NormalizedTitle, DropsTheYearAtTheEndAndOneOfEachTag) {
    EXPECT_EQ(GameGroup::normalize(QString::fromUtf8(GetParam().title)), QString::fromUtf8(GetParam().normalized));
}

INSTANTIATE_TEST_SUITE_P(Titles, NormalizedTitle,
                         testing::Values(NormalizeCase{"Doom", "doom"}, NormalizeCase{"  Doom (1993) ", "doom"},
                                         NormalizeCase{"Doom (DOS) (1993)", "doom"},
                                         NormalizeCase{"Doom (1993) (DOS)", "doom (1993)"}, NormalizeCase{"(dos)", ""},
                                         NormalizeCase{"Loom(CD)", "loom"},
                                         NormalizeCase{"Loom (CD) (CD)", "loom (cd)"},
                                         NormalizeCase{"Zak (CD-ROM) Deluxe (deluxe)", "zak deluxe"},
                                         NormalizeCase{"A  (Talkie)   B", "a b"}, NormalizeCase{"(1993)", "(1993)"},
                                         NormalizeCase{"Élan (199x)", "élan (199x)"}));

TEST(GameGroup, StandsForItselfByTheLastPlayedThenTheInstalledThenTheFirstPlatform) {
    const QDateTime early(QDate(2020, 1, 1), QTime(0, 0));
    const auto dos = makeGame(QStringLiteral("d"), QStringLiteral("Loom"));
    const auto scumm = makeGame(QStringLiteral("s"), QStringLiteral("Loom"), QStringLiteral("ScummVM"));
    EXPECT_EQ(GameGroup(QStringLiteral("loom"), {scumm, dos}).primaryVariant->id, QStringLiteral("d"));

    const auto installed = makeGame(QStringLiteral("s"), QStringLiteral("Loom"), QStringLiteral("ScummVM"),
                                    [](Game &game) { game.isInstalled = true; });
    EXPECT_EQ(GameGroup(QStringLiteral("loom"), {dos, installed}).primaryVariant->id, QStringLiteral("s"));

    const auto never = makeGame(QStringLiteral("d"), QStringLiteral("Loom"), QStringLiteral("MS-DOS"),
                                [](Game &game) { game.lastPlayed = QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC); });
    EXPECT_EQ(GameGroup(QStringLiteral("loom"), {never, installed}).primaryVariant->id, QStringLiteral("s"));
    const auto played = makeGame(QStringLiteral("w"), QStringLiteral("Loom"), QStringLiteral("Windows"),
                                 [&](Game &game) { game.lastPlayed = early; });
    const GameGroup group(QStringLiteral("loom"), {installed, played, dos});
    EXPECT_EQ(group.primaryVariant->id, QStringLiteral("w"));
    EXPECT_EQ(group.lastPlayed(), early);
    EXPECT_EQ(group.availablePlatforms(),
              (QStringList{QStringLiteral("MS-DOS"), QStringLiteral("ScummVM"), QStringLiteral("Windows")}));
    EXPECT_EQ(group.variant(QStringLiteral("ScummVM")), installed);
    EXPECT_EQ(group.variant(QStringLiteral("scummvm")), nullptr);
}

} // namespace ludarium::test
