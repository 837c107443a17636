#include "Cli/GameChoice.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

GamePtr game(const char *id, const char *title) {
    auto game = std::make_shared<Game>();
    game->id = QString::fromUtf8(id);
    game->title = QString::fromUtf8(title);
    game->searchTitle = game->title.toLower().toUtf8();
    return game;
}

QStringList ids(const GameList &games) {
    QStringList result;
    for (const GamePtr &game : games)
        result << game->id;
    return result;
}

const GameList library{
    game("1", "Doom"), game("2", "DOOM II"), game("3", "Éclair"), game("5", "1"), game("0af151e3-f961", "Myst"),
    game("6", "zork"), game("7", "Zork"),
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
        {"0AF151E3", {QStringLiteral("0af151e3-f961")}},
        {"0af151e3…", {QStringLiteral("0af151e3-f961")}}, // as a narrow list shows it
        {"0af151e", {}},
        {"nothing", {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ids(gamesNamed(library, QString::fromUtf8(row.text))), row.expected) << row.text;
}

} // namespace
} // namespace ludarium
