#include "Cli/JsonRecords.h"

#include "Cli/Output.h"
#include "Models/Game.h"
#include "Models/LaunchPlan.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"
#include "Services/Library/UserData.h"
#include "support/TestHost.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace ludarium {
namespace {

/// What `print` writes to an output.
template<typename Print>
QByteArray printed(Print print) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("output")));
    EXPECT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    Output output(file.handle());
    print(output);
    output.finish();
    file.seek(0);
    return file.readAll();
}

QList<std::string> keys(const Json &object) {
    QList<std::string> result;
    for (const auto &[key, value] : object.items())
        result << key;
    return result;
}

TEST(JsonText, WritesAGameByItsSerialNamesWithTypedValues) {
    Game game;
    game.id = QStringLiteral("id-1");
    game.title = QStringLiteral("Größe \"X\"\n");
    game.platform = QStringLiteral("MS-DOS");
    game.releaseDate = QDateTime(QDate(1995, 1, 13), QTime(3, 0), Qt::UTC);
    game.releaseYear = 1995;
    game.series = QString(QLatin1String("")); // an empty element of the collection
    game.maxPlayers = 2;
    game.cooperative = false;
    game.notes = "Notes";
    game.communityRating = 4.5;
    game.communityRatingCount = 12;
    game.hide = true;
    game.isInstalled = true;
    game.playTime = 61.5;
    game.lastPlayed = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::OffsetFromUTC, 3600);
    game.gameProgress = GameProgress::beaten;
    test::TestHost host;
    UserData user(host.settings);
    user.setRating(game.id, 4);
    const Json json = toJson(game, user);
    EXPECT_EQ(keys(json),
              (QList<std::string>{
                  "ID",         "Title",        "Platform",   "ReleaseDate",         "releaseYear",
                  "MaxPlayers", "Cooperative",  "Notes",      "CommunityStarRating", "CommunityStarRatingTotalVotes",
                  "Hide",       "state",        "installed",  "compressed",          "downloadable",
                  "favorite",   "gameProgress", "userRating", "playCount",           "playTime",
                  "lastPlayed"}));
    EXPECT_EQ(json["Title"], "Größe \"X\"\n");
    EXPECT_EQ(json["ReleaseDate"], "1995-01-13T03:00:00");
    EXPECT_EQ(json["releaseYear"], 1995);
    EXPECT_EQ(json["MaxPlayers"], 2);
    EXPECT_EQ(json["Cooperative"], false);
    EXPECT_EQ(json["CommunityStarRating"], 4.5);
    EXPECT_EQ(json["Hide"], true);
    EXPECT_EQ(json["installed"], true);
    EXPECT_EQ(json["compressed"], false);
    EXPECT_EQ(json["lastPlayed"], "2026-01-02T02:04:05Z");
    EXPECT_EQ(json["gameProgress"], "beaten");
}

TEST(JsonText, StaysValidWithWhatJsonCannotHold) {
    Game game;
    game.id = QStringLiteral("id");
    game.title = QStringLiteral("lone \xd800 surrogate");
    game.notes = QByteArray("broken \xff\xc3 bytes");
    game.communityRating = std::numeric_limits<double>::quiet_NaN();
    test::TestHost host;
    const UserData user(host.settings);
    const QByteArray text = printed([&](Output &output) { printJson(output, toJson(game, user)); });
    const Json read = Json::parse(text.toStdString());
    EXPECT_FALSE(read.contains("CommunityStarRating"));
    EXPECT_EQ(read["Notes"], "broken \uFFFD\uFFFD bytes");
}

TEST(JsonText, KeepsControlCharactersFromTheTerminalAndInTheData) {
    Game game;
    game.id = QStringLiteral("id");
    game.title = QStringLiteral("a\x1b[2J\x7f\u009b\u00a0é");
    test::TestHost host;
    const UserData user(host.settings);
    const QByteArray text = printed([&](Output &output) { printJson(output, toJson(game, user)); });
    EXPECT_FALSE(text.contains('\x1b'));
    EXPECT_FALSE(text.contains('\x7f'));
    EXPECT_FALSE(text.contains("\xc2\x9b"));
    EXPECT_TRUE(text.contains("\xc2\xa0é"));
    EXPECT_EQ(Json::parse(text.toStdString())["Title"], game.title.toStdString());
}

TEST(JsonText, PrintsAListElementByElement) {
    const QByteArray none = printed([](Output &output) { JsonList(output, "games").finish(); });
    EXPECT_EQ(Json::parse(none.toStdString()), Json::parse(R"({"schema":2,"games":[]})"));
    const QByteArray two = printed([](Output &output) {
        JsonList list(output, "games");
        list.add(Json::parse(R"({"ID":"a"})"));
        list.add(Json::parse(R"({"ID":"b"})"));
        list.finish();
    });
    EXPECT_EQ(two, "{\"schema\":2,\"games\":[\n{\"ID\":\"a\"},\n{\"ID\":\"b\"}\n]}\n");
}

TEST(JsonText, WritesPlatformsAndPlaylistsByTheirSerialNames) {
    Platform platform = Platform::named(QStringLiteral("MS-DOS"), QStringLiteral("Computer"));
    platform.releaseDate = QDate(1981, 8, 12);
    EXPECT_EQ(toJson(platform),
              Json::parse(R"({"Name":"MS-DOS","Category":"Computer","ReleaseDate":"1981-08-12T00:00:00"})"));

    Playlist playlist;
    playlist.id = QStringLiteral("p");
    playlist.name = QStringLiteral("Best");
    playlist.gameIds = {QStringLiteral("a")};
    playlist.autoPopulate = true;
    playlist.filters = {{QString(), QStringLiteral("Genre"), QStringLiteral("Contains")}};
    EXPECT_EQ(toJson(playlist), Json::parse(R"({"ID":"p","Name":"Best","GameIDs":["a"],
        "AutoPopulate":true,"PlaylistFilter":[{"FieldKey":"Genre","ComparisonTypeKey":"Contains"}]})"));
}

TEST(JsonText, WritesThePlansFilesAsTextOrAsBase64) {
    LaunchPlan plan;
    plan.route = QStringLiteral("dos");
    plan.arguments = {QStringLiteral("-conf"), QStringLiteral("/tmp/a b")};
    plan.files = {{QStringLiteral("/tmp/a"), "[autoexec]\n", false}, {QStringLiteral("/tmp/b"), "\x81\x9c", true}};
    plan.decisions = {{QStringLiteral("route"), QStringLiteral("dos"), QStringLiteral("nothing else")}};
    const Json json = toJson(plan);
    EXPECT_EQ(json["arguments"], Json::parse(R"(["-conf","/tmp/a b"])"));
    EXPECT_EQ(json["files"], Json::parse(R"([{"path":"/tmp/a","isExecutable":false,"content":"[autoexec]\n"},
        {"path":"/tmp/b","isExecutable":true,"contentBase64":"gZw="}])"));
    EXPECT_EQ(json["decisions"], Json::parse(R"([{"subject":"route","choice":"dos","reason":"nothing else"}])"));
}

TEST(Output, TellsAWriteThatDidNotArrive) {
    QFile full(QStringLiteral("/dev/full"));
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    Output output(full.handle());
    output.line(QStringLiteral("data"));
    EXPECT_THROW(output.finish(), std::system_error);
}

} // namespace
} // namespace ludarium
