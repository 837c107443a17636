#include "Cli/GameChoice.h"

#include "Cli/CliError.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

GamePtr game(const char *id, const char *title, const char *platform = "MS-DOS", const char *developer = nullptr,
             const char *sortTitle = nullptr) {
    auto game = std::make_shared<Game>();
    game->id = QString::fromUtf8(id);
    game->title = QString::fromUtf8(title);
    game->platform = QString::fromUtf8(platform);
    game->searchTitle = game->title.toLower().toUtf8();
    if (developer)
        game->searchDeveloper = QString::fromUtf8(developer).toLower().toUtf8();
    if (sortTitle)
        game->searchSortTitle = QString::fromUtf8(sortTitle).toLower().toUtf8();
    return game;
}

QStringList ids(const GameList &games) {
    QStringList result;
    for (const GamePtr &game : games)
        result << game->id;
    return result;
}

const GameList library{
    game("1", "Doom"),
    game("2", "DOOM II", "MS-DOS", "id Software"),
    game("3", "Éclair", "ScummVM"),
    game("4", "Zak", "ScummVM", nullptr, "A Zak"),
    game("5", "1"),
    game("6", "zork"),
    game("7", "Zork"),
};

TEST(GameChoice, PrefersTheIdThenTheTitleThenAPartOfIt) {
    const struct {
        const char *text;
        QStringList expected;
    } rows[] = {
        {"1", {QStringLiteral("1")}}, // though game 5 is called so
        {"5", {QStringLiteral("5")}},
        {"doom", {QStringLiteral("1")}}, // though game 2 contains it
        {"oom", {QStringLiteral("1"), QStringLiteral("2")}},
        {"oom ii", {QStringLiteral("2")}},
        {"éCLAIR", {QStringLiteral("3")}},
        {"ZORK", {QStringLiteral("6"), QStringLiteral("7")}},
        {"id software", {}}, // only titles count
        {"nothing", {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ids(gamesNamed(library, QString::fromUtf8(row.text))), row.expected) << row.text;
}

TEST(GameSelection, SearchesAndSortsByTheSortTitle) {
    const struct {
        GameFilter filter;
        QStringList expected;
    } rows[] = {
        {{},
         {QStringLiteral("5"), QStringLiteral("4"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("6"),
          QStringLiteral("7"), QStringLiteral("3")}},
        {{QStringLiteral("ID SOFT"), {}}, {QStringLiteral("2")}},
        {{QStringLiteral("a zak"), {}}, {QStringLiteral("4")}},
        {{{}, QStringLiteral("ScummVM")}, {QStringLiteral("4"), QStringLiteral("3")}},
        {{{}, QStringLiteral("scummvm")}, {QStringLiteral("4"), QStringLiteral("3")}},
        {{QStringLiteral("doom"), QStringLiteral("ScummVM")}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ids(selectGames(library, row.filter)), row.expected);
}

TEST(GameSelection, RefusesAPlatformThatNoGameHas) {
    try {
        selectGames(library, {{}, QStringLiteral("Amiga")});
        FAIL() << "no error";
    } catch (const CliError &error) {
        EXPECT_EQ(error.status(), 1);
        EXPECT_TRUE(QByteArray(error.what()).contains("Amiga"));
    }
}

} // namespace
} // namespace ludarium
