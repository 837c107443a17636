#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/PlayTime.h"
#include "Models/RecordDecoder.h"
#include "Models/RecordEncoder.h"

#include <QSet>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

QString text(const char *utf8) {
    return QString::fromUtf8(utf8);
}

template<typename Record>
Record decoded(std::initializer_list<std::pair<const char *, const char *>> fields) {
    RecordDecoder<Record> decoder;
    for (const auto &[key, value] : fields)
        decoder.set(key, value);
    return decoder.finish();
}

template<typename Record>
std::string json(const Record &record) {
    QByteArray out;
    appendJson(out, record);
    return out.toStdString();
}

TEST(GameFolderName, IsThePieceThatTheConfigurationPathNames) {
    const std::pair<const char *, const char *> cases[]{
        {"eXo\\eXoDOS\\!dos\\abuse\\dosbox.conf", "abuse"},
        {"eXo/eXoDOS/!dos/abuse/Abuse (1996).BAT", "abuse"},
        {"dosbox.conf", "dosbox.conf"},
        {"\\\\abuse\\\\run.exe", "abuse"},
        {"eXo\\Abuse", "Abuse"},
        {"eXo\\Abuse\\", "Abuse"},
        {"eXo\\abuse\\dosbox.txt", "dosbox.txt"},
    };
    for (const auto &[path, folder] : cases) {
        Game game;
        game.configurationPath = text(path);
        EXPECT_EQ(game.gameFolderName().toStdString(), folder) << path;
    }
    for (const QString &path : {QString(), text(""), text("\\/")}) {
        Game game;
        game.configurationPath = path;
        EXPECT_TRUE(game.gameFolderName().isNull());
    }
}

TEST(StarRating, IsRoundedAndClamped) {
    const std::pair<std::optional<double>, int> cases[]{{std::nullopt, 0}, {4.6, 5}, {4.4, 4}, {2.5, 3},
                                                        {7.0, 5},          {-3, 0},  {0, 0}};
    for (const auto &[rating, stars] : cases) {
        Game game;
        game.communityRating = rating;
        EXPECT_EQ(game.starRating(), stars) << rating.value_or(-1);
    }
}

TEST(Games, AreTheSameByIdAlone) {
    Game one, other;
    one.id = other.id = text("a");
    other.title = text("Other");
    EXPECT_EQ(one, other);
    EXPECT_EQ((QSet<Game>{one, other}.size()), 1);
    other.id = text("b");
    EXPECT_FALSE(one == other);

    one.platform = text("My Dreamm Games");
    EXPECT_TRUE(one.isDREAMMGame());
    EXPECT_FALSE(other.isDREAMMGame());
}

TEST(AdditionalApplications, AreClassifiedByNameThenPath) {
    using enum ApplicationType;
    struct {
        const char *name, *path;
        ApplicationType type;
    } const cases[]{
        {"Read the Manual", "", manual},  {"Extras", "x\\MANUALS\\a.exe", manual},
        {"Setup", "a.PDF", manual},       {"EXTRA levels", "setup.exe", extras},
        {"Install", "", setup},           {"Reconfigure", "", setup},
        {"Setup doc", "", setup},         {"Documents", "", document},
        {"Hints", "a.TXT", document},     {"Hints", "a.doc", document},
        {"Hints", "a.docx", application}, {"Editor", "", application},
    };
    for (const auto &[name, path, type] : cases) {
        AdditionalApplication entry;
        entry.name = text(name);
        if (*path)
            entry.applicationPath = text(path);
        EXPECT_EQ(entry.applicationType(), type) << name << ' ' << path;
    }
    EXPECT_EQ(applicationTypeSymbol(setup), text("gearshape.fill"));
}

TEST(AdditionalApplications, CompareAndHashByAllFields) {
    const auto base = decoded<AdditionalApplication>({{"Id", "1"}, {"GameID", "g"}, {"Name", "n"}});
    EXPECT_EQ(base, decoded<AdditionalApplication>({{"Id", "1"}, {"GameID", "g"}, {"Name", "n"}}));
    for (const auto &[key, value] : {std::pair{"CommandLine", "x"},
                                     {"AutoRunBefore", "true"},
                                     {"WaitForExit", "true"},
                                     {"PlayCount", "2"},
                                     {"Priority", "0"},
                                     {"SideA", "false"},
                                     {"SideB", "true"}}) {
        const auto changed =
            decoded<AdditionalApplication>({{"Id", "1"}, {"GameID", "g"}, {"Name", "n"}, {key, value}});
        EXPECT_NE(base, changed) << key;
        EXPECT_NE(qHash(base), qHash(changed)) << key;
    }
}

TEST(RecordDecoder, GivesEachRecordItsDefaults) {
    const auto application = decoded<AdditionalApplication>({{"PlayCount", "many"}, {"AutoRunAfter", "1"}});
    EXPECT_FALSE(application.id.isEmpty());
    EXPECT_EQ(application.name, text("Unknown"));
    EXPECT_TRUE(application.gameId.isEmpty() && application.applicationPath.isNull());
    EXPECT_TRUE(application.playCount == 0 && !application.autoRunAfter && !application.priority && !application.sideA);

    const auto platform = decoded<Platform>({{"ReleaseDate", "1981-08-12T00:00:00"}});
    EXPECT_EQ(platform.name, text("Unknown"));
    EXPECT_EQ(platform.releaseDate, QDate(1981, 8, 12));
    EXPECT_TRUE(platform.category.isNull());

    const auto playlist =
        decoded<Playlist>({{"GameId", "a"}, {"GameId", "b"}, {"SortOrder", "x"}, {"AutoPopulate", "TRUE"}});
    EXPECT_FALSE(playlist.id.isEmpty());
    EXPECT_EQ(playlist.name, text("Unnamed Playlist"));
    EXPECT_EQ(playlist.gameIds, QStringList({text("a"), text("b")}));
    EXPECT_TRUE(playlist.autoPopulate && !playlist.sortOrder && playlist.description.isNull());

    const auto link = decoded<PlaylistGame>({{"ManualOrder", ""}});
    EXPECT_TRUE(link.gameId.isEmpty() && link.playlistId.isEmpty() && !link.order);
    const auto filter = decoded<PlaylistFilter>({});
    EXPECT_TRUE(filter.value.isNull() && filter.fieldKey.isEmpty());
    EXPECT_EQ(filter.comparisonType, text("Equals"));
}

TEST(RecordEncoder, WritesTheKeysOfTheCacheInOrder) {
    EXPECT_EQ(
        json(decoded<Platform>({{"Name", "A"}, {"Notes", "n"}, {"ReleaseDate", "1981-08-12"}, {"Category", "C"}})),
        R"({"Name":"A","Category":"C","Notes":"n"})");
    auto playlist = decoded<Playlist>({{"PlaylistId", "p"},
                                       {"Name", "P"},
                                       {"SortOrder", "-2"},
                                       {"GameId", "g"},
                                       {"NestedPlaylistId", "q"},
                                       {"AutoPopulate", "true"}});
    playlist.filters = {decoded<PlaylistFilter>({{"Value", "v"}, {"FieldKey", "Genre"}}), decoded<PlaylistFilter>({})};
    EXPECT_EQ(json(playlist),
              R"({"PlaylistId":"p","Name":"P","Notes":null,"SortOrder":-2,"GameId":["g"],)"
              R"("NestedPlaylistId":["q"],"AutoPopulate":"true","PlaylistFilter":[{"Value":"v",)"
              R"("FieldKey":"Genre","ComparisonTypeKey":"Equals"},{"FieldKey":"","ComparisonTypeKey":"Equals"}]})");
    EXPECT_EQ(json(decoded<PlaylistGame>({{"GameId", "g"}})), R"({"GameId":"g","PlaylistId":"","ManualOrder":null})");
    EXPECT_EQ(json(decoded<AdditionalApplication>(
                  {{"Id", "i"}, {"GameID", "g"}, {"Name", "n"}, {"ApplicationPath", "a\\b"}, {"CommandLine", "c"}})),
              R"({"Id":"i","GameID":"g","Name":"n","ApplicationPath":"a\\b"})");
}

TEST(Platforms, KnowWhatIsPlayedFromRoms) {
    EXPECT_EQ(Platform::retroArchPlatformNames().size(), 71);
    EXPECT_EQ(
        (QSet<QString>(Platform::retroArchPlatformNames().begin(), Platform::retroArchPlatformNames().end()).size()),
        71);
    EXPECT_TRUE(Platform::isRetroArchPlatformName(text("Sony Playstation 3")));
    EXPECT_FALSE(Platform::isRetroArchPlatformName(text("sega genesis")));
    EXPECT_TRUE(Platform::named(text("MAME"), {}).isArcade());
    EXPECT_TRUE(Platform::named(text("Sega ARCADE"), {}).isArcade());
    EXPECT_FALSE(Platform::named(text("mame"), {}).isArcade());
    ASSERT_EQ(Platform::defaultPlatforms().size(), 8);
    EXPECT_EQ(Platform::defaultPlatforms()[5].name, text("DemoScene"));
    EXPECT_EQ(Platform::defaultPlatforms()[5].category, text("Demo"));
}

TEST(StoredEnumerations, ReadOnlyWhatTheyWrite) {
    for (const char *stored : {"staging", "dosbox-x", "ece", "vanilla", "custom"})
        EXPECT_EQ(emulatorTypeText(emulatorTypeFromText(text(stored)).value()), text(stored));
    EXPECT_FALSE(emulatorTypeFromText(text("Staging")));
    EXPECT_EQ(gameProgressFromNumber(4), GameProgress::mastered);
    EXPECT_FALSE(gameProgressFromNumber(5) || gameProgressFromNumber(-1) || gameProgressFromNumber(1LL << 32));
}

TEST(PlayTimes, AreCutToWholeUnits) {
    EXPECT_EQ(formatPlayTime(59.9), text("0m"));
    EXPECT_EQ(formatPlayTime(3599), text("59m"));
    EXPECT_EQ(formatPlayTime(3661), text("1h 1m"));
    EXPECT_EQ(formatSessionDuration(59.9), text("59s"));
    EXPECT_EQ(formatSessionDuration(61), text("1m 1s"));
    EXPECT_EQ(formatSessionDuration(3661), text("1h 1m 1s"));
}

} // namespace
} // namespace ludarium
