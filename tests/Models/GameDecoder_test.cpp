#include "Models/FieldText.h"
#include "Models/GameDecoder.h"
#include "Models/RecordEncoder.h"
#include "Models/TextPool.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QUuid>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

GamePtr decoded(std::initializer_list<std::pair<const char *, const char *>> fields) {
    TextPool pool;
    GameDecoder decoder(pool);
    for (const auto &[key, text] : fields)
        decoder.set(key, text);
    return decoder.finish();
}

TEST(GameDecoder, GivesDefaultsToAnEmptyGame) {
    const GamePtr game = decoded({});
    EXPECT_FALSE(QUuid(game->id).isNull());
    EXPECT_EQ(game->title, QStringLiteral("Unknown"));
    EXPECT_EQ(game->searchTitle, "unknown");
    EXPECT_EQ(game->platform, QStringLiteral("MS-DOS"));
    EXPECT_TRUE(game->sortTitle.isNull());
    EXPECT_TRUE(game->searchSortTitle.isNull());
    EXPECT_TRUE(game->notes.isNull());
    EXPECT_FALSE(game->hide || game->releaseDate || game->releaseYear || game->maxPlayers || game->communityRating);
}

TEST(GameDecoder, MakesTheSameIdForTheSameGameOnly) {
    const auto id = [](const char *platform, const char *title, const char *path) {
        return decoded({{"Platform", platform}, {"Title", title}, {"ApplicationPath", path}})->id;
    };
    EXPECT_EQ(id("MS-DOS", "Doom", "a"), id("MS-DOS", "Doom", "a"));
    const QSet<QString> ids{id("MS-DOS", "Doom", "a"), id("Windows", "Doom", "a"), id("MS-DOS", "Doom II", "a"),
                            id("MS-DOS", "Doom", "b"), id("MS-DOSDoom", "", "a")};
    EXPECT_EQ(ids.size(), 5);
}

TEST(GameDecoder, TellsAnEmptyTextFromAMissingOne) {
    const GamePtr game = decoded({{"Series", ""}, {"Notes", ""}, {"Title", ""}, {"ID", ""}});
    EXPECT_FALSE(game->series.isNull());
    EXPECT_FALSE(game->searchSeries.isNull());
    EXPECT_FALSE(game->notes.isNull());
    EXPECT_TRUE(game->title.isEmpty());
    EXPECT_TRUE(game->id.isEmpty());
    EXPECT_TRUE(game->publisher.isNull());
}

TEST(GameDecoder, StartsAfreshAfterEachGame) {
    TextPool pool;
    GameDecoder decoder(pool);
    decoder.set("ID", "1");
    decoder.set("Genre", "Action");
    const GamePtr first = decoder.finish();
    decoder.set("ID", "2");
    decoder.set("ID", "3");
    const GamePtr second = decoder.finish();
    EXPECT_EQ(first->id, QStringLiteral("1"));
    EXPECT_EQ(second->id, QStringLiteral("2")) << "the first of two texts counts";
    EXPECT_TRUE(second->genre.isNull());
}

TEST(GameDecoder, ReadsFlagsFromTrueInAnyCaseOnly) {
    for (const char *text : {"true", "True", "TRUE"})
        EXPECT_EQ(decoded({{"Hide", text}})->hide, true) << text;
    for (const char *text : {"false", "1", "yes", "", "truex"})
        EXPECT_EQ(decoded({{"Hide", text}})->hide, false) << text;
}

TEST(GameDecoder, TakesTheYearOfTheInputBeforeThatOfTheDate) {
    EXPECT_EQ(decoded({{"ReleaseDate", "1990"}})->releaseYear, 1990);
    EXPECT_EQ(decoded({{"ReleaseDate", "1990"}})->releaseDate->date().year(), 1990);
    EXPECT_EQ(decoded({{"ReleaseDate", "1990"}, {"releaseYear", "1991"}})->releaseYear, 1991);
    EXPECT_EQ(decoded({{"ReleaseDate", "1990"}, {"releaseYear", "soon"}})->releaseYear, 1990);
    const GamePtr vague = decoded({{"ReleaseDate", "circa 1990"}});
    EXPECT_FALSE(vague->releaseDate || vague->releaseYear);
}

TEST(GameDecoder, LowerCasesWhatSearchesCompareWith) {
    const GamePtr game =
        decoded({{"Title", "ÀÉ The DOOM"}, {"Genre", "Beat 'em Up; ÑANDÚ"}, {"Developer", "id Software"}});
    EXPECT_EQ(game->searchTitle, QByteArray("àé the doom"));
    EXPECT_EQ(game->searchGenre, QByteArray("beat 'em up; ñandú"));
    EXPECT_EQ(game->searchDeveloper, QByteArray("id software"));
    EXPECT_EQ(game->title, QStringLiteral("ÀÉ The DOOM"));
}

TEST(GameDecoder, SharesRepeatedTextsAcrossPoolsOfOneLibrary) {
    TextPool upstream;
    TextPool pools[2]{TextPool(&upstream), TextPool(&upstream)};
    GamePtr games[2];
    for (int i = 0; i < 2; ++i) {
        GameDecoder decoder(pools[i]);
        decoder.set("Genre", "Action; Adventure");
        decoder.set("Platform", "MS-DOS");
        games[i] = decoder.finish();
    }
    EXPECT_EQ(games[0]->genre.constData(), games[1]->genre.constData());
    EXPECT_EQ(games[0]->searchGenre.constData(), games[1]->searchGenre.constData());
    EXPECT_EQ(games[0]->platform.constData(), games[1]->platform.constData());
}

TEST(FieldText, ReadsDecimalIntegersOnly) {
    const std::pair<const char *, std::optional<int>> cases[]{
        {"4", 4},
        {"-4", -4},
        {"+4", 4},
        {"007", 7},
        {"2147483647", 2147483647},
        {"", std::nullopt},
        {"+", std::nullopt},
        {"+-4", std::nullopt},
        {"4.0", std::nullopt},
        {"0x4", std::nullopt},
        {" 4", std::nullopt},
        {"2147483648", std::nullopt},
        {"four", std::nullopt},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(fieldInteger(text), value) << text;
}

TEST(FieldText, ReadsFiniteNumbersOnly) {
    const std::pair<const char *, std::optional<double>> cases[]{
        {"3.890499", 3.890499},  {"4", 4.0},
        {"+4.5", 4.5},           {"-1e1", -10.0},
        {"", std::nullopt},      {"4,5", std::nullopt},
        {"nan", std::nullopt},   {"inf", std::nullopt},
        {"1e999", std::nullopt}, {"4.5x", std::nullopt},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(fieldReal(text), value) << text;
}

TEST(CachedGame, KeepsItsKeysInOrderAndComesBackWithSearchFields) {
    const GamePtr game = decoded({{"ID", "7"},
                                  {"Title", "Doom \"II\"\n\x01\\"},
                                  {"SortTitle", "Doom 2"},
                                  {"Platform", "MS-DOS"},
                                  {"ReleaseDate", "1994-10-10"},
                                  {"Developer", "id"},
                                  {"Publisher", "GT"},
                                  {"Genre", ""},
                                  {"Series", "s"},
                                  {"PlayMode", "p"},
                                  {"MaxPlayers", "4"},
                                  {"Cooperative", "true"},
                                  {"Notes", "Höhe"},
                                  {"Overview", "o"},
                                  {"Rating", "r"},
                                  {"CommunityStarRating", "4"},
                                  {"ApplicationPath", "eXo\\a.bat"},
                                  {"ConfigurationPath", "c"},
                                  {"CommandLine", "l"},
                                  {"RootFolder", "f"},
                                  {"ManualPath", "m"},
                                  {"MusicPath", "u"},
                                  {"VideoPath", "v"},
                                  {"Hide", "false"},
                                  {"Source", "q"},
                                  {"DatabaseID", "17"},
                                  {"WikipediaURL", "w"},
                                  {"VideoUrl", "y"},
                                  {"DateAdded", "2020"}});
    QByteArray json;
    appendJson(json, *game);
    EXPECT_EQ(json.toStdString(),
              R"({"ID":"7","Title":"Doom \"II\"\n\u0001\\","SortTitle":"Doom 2","Platform":"MS-DOS","Developer":"id",)"
              R"("Publisher":"GT","Genre":"","Series":"s","PlayMode":"p","Notes":"Höhe","Overview":"o","Rating":"r",)"
              R"("ApplicationPath":"eXo\\a.bat","ConfigurationPath":"c","CommandLine":"l","RootFolder":"f",)"
              R"("ManualPath":"m","MusicPath":"u","VideoPath":"v","Source":"q","DatabaseID":"17","WikipediaURL":"w",)"
              R"("VideoURL":"y","releaseYear":1994})");

    TextPool pool;
    GameDecoder decoder(pool);
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    ASSERT_EQ(object.size(), 24);
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it->isDouble())
            decoder.setReleaseYear(it->toInt());
        else
            decoder.set(it.key().toStdString(), it->toString().toStdString());
    }
    const GamePtr back = decoder.finish();
    EXPECT_EQ(back->title, game->title);
    EXPECT_EQ(back->searchTitle, game->searchTitle);
    EXPECT_EQ(back->notes, game->notes);
    EXPECT_EQ(back->videoURL, game->videoURL);
    EXPECT_EQ(back->releaseYear, 1994);
    EXPECT_FALSE(back->communityRating || back->releaseDate || back->dateAdded || back->hide);

    json.clear();
    appendJson(json, *decoded({{"ID", "1"}}));
    EXPECT_EQ(json.toStdString(), R"({"ID":"1","Title":"Unknown","Platform":"MS-DOS"})");
}

} // namespace
} // namespace ludarium
