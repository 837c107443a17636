#include "e2e/CliRun.h"

#include "Host/HostPaths.h"
#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "Services/Library/UserData.h"
#include "support/Archives.h"
#include "support/Mount.h"
#include "support/SamplePictures.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

// The commands of the command line program that list a library and keep what the user gives its games, each a run of
// the real program.
namespace ludarium {
namespace {

using namespace Qt::StringLiterals;
using test::CliResult;
using test::json;
using test::members;

/// Seven games on two platforms; of those on the disk are "writer-id" and "endless-id".
class CliLibrary : public testing::Test {
  protected:
    CliLibrary() {
        collection.put(
            u"Data/Platforms/ScummVM.xml"_s,
            "<LaunchBox>"
            "<Game><ID>alpha</ID><Title>Alpha</Title><Platform>ScummVM</Platform><Genre>Adventure; Puzzle</Genre>"
            "<Developer>Sierra</Developer><Publisher>Plum</Publisher><Series>Greek</Series>"
            "<ReleaseDate>1991-01-01T00:00:00</ReleaseDate><CommunityStarRating>4</CommunityStarRating></Game>"
            "<Game><ID>beta</ID><Title>Beta</Title><Platform>ScummVM</Platform><Genre>Action</Genre>"
            "<Developer>Origin</Developer><Publisher>Sierra</Publisher>"
            "<ReleaseDate>1985-01-01T00:00:00</ReleaseDate><CommunityStarRating>5</CommunityStarRating></Game>"
            "<Game><ID>talkie</ID><Title>Writer (Talkie)</Title><Platform>ScummVM</Platform></Game>"
            "</LaunchBox>");
    }

    CliResult run(const QString &command, const QStringList &rest = {}) const {
        return cli.run(QStringList{u"--collection"_s, collection.path(), command} + rest);
    }
    QJsonObject jsonOf(const QString &command, const QStringList &rest = {}) const {
        const CliResult result = run(command, rest + QStringList{u"--json"_s});
        EXPECT_EQ(result.status, 0) << result.errors.toStdString();
        return json(result);
    }
    QStringList ids(const QString &command, const QStringList &rest = {}) const {
        return members(jsonOf(command, rest).value(u"games"_s).toArray(), "ID");
    }
    /// A minute of "alpha" now and an hour of "beta" on the day before.
    void playTwoGames() const {
        SqliteSettingsStore settings(HostPaths::native(cli.home()).settingsFolder());
        UserData user(settings);
        const QDateTime now = QDateTime::currentDateTime();
        user.recordPlay(u"beta"_s, 3600, now.addDays(-1));
        user.recordPlay(u"alpha"_s, 60, now);
    }

    test::CliRun cli;
    test::TinyCollection collection;
};

TEST_F(CliLibrary, FindsGamesAsTheDesktopProgramDoes) {
    EXPECT_EQ(ids(u"search"_s, {u"--sort"_s, u"rating"_s, u"--limit"_s, u"3"_s}),
              (QStringList{u"beta"_s, u"writer-id"_s, u"alpha"_s}));
    playTwoGames();
    ASSERT_EQ(run(u"favorite"_s, {u"beta"_s}).status, 0);
    const struct {
        QStringList arguments;
        QStringList expected;
    } rows[] = {
        {{}, {u"alpha"_s, u"beta"_s, u"endless-id"_s, u"saga-1"_s, u"saga-2"_s, u"writer-id"_s, u"talkie"_s}},
        {{u"SIERRA"_s}, {u"alpha"_s, u"beta"_s}},
        {{u"greek"_s}, {u"alpha"_s}},
        {{u"nothing of this"_s}, {}},
        {{u"--genre"_s, u"puzzle"_s}, {u"alpha"_s}},
        {{u"--genre"_s, u"venture"_s}, {u"alpha"_s}},
        {{u"--developer"_s, u"sierra"_s}, {u"alpha"_s}},
        {{u"--publisher"_s, u"Sierra"_s}, {u"beta"_s}},
        {{u"--series"_s, u"greek"_s, u"--limit"_s, u"1"_s}, {u"alpha"_s}},
        {{u"--year"_s, u"1991"_s}, {u"alpha"_s, u"writer-id"_s}},
        {{u"--playlist"_s, u"best"_s}, {u"writer-id"_s}},
        {{u"--playlist"_s, u"best-id"_s}, {u"writer-id"_s}},
        {{u"--collection-id"_s, u"80s-classics"_s}, {u"beta"_s}},
        {{u"--collection-id"_s, u"sierra games"_s}, {u"alpha"_s, u"beta"_s}},
        {{u"--favorites"_s}, {u"beta"_s}},
        {{u"--installed"_s}, {u"endless-id"_s, u"writer-id"_s}},
        {{u"--sort"_s, u"year"_s, u"--platform"_s, u"scummvm"_s}, {u"talkie"_s, u"beta"_s, u"alpha"_s}},
        {{u"--sort"_s, u"developer"_s, u"--year"_s, u"1991"_s}, {u"writer-id"_s, u"alpha"_s}},
        {{u"--sort"_s, u"recent"_s, u"--limit"_s, u"2"_s}, {u"alpha"_s, u"beta"_s}},
        {{u"--sort"_s, u"plays"_s, u"--limit"_s, u"2"_s}, {u"alpha"_s, u"beta"_s}},
        {{u"--limit"_s, u"0"_s}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ids(u"search"_s, row.arguments), row.expected) << row.arguments.join(u' ').toStdString();
}

TEST_F(CliLibrary, RefusesNamesThatNothingHasInOneLine) {
    const struct {
        QStringList arguments;
        const char *text;
    } rows[] = {
        {{u"search"_s, u"--genre"_s, u"Racing"_s}, "No game has the genre \"Racing\""},
        {{u"search"_s, u"--genre"_s, QString()}, "No game has the genre"},
        {{u"search"_s, u"--developer"_s, u"Sier"_s}, "No game has the developer \"Sier\""},
        {{u"search"_s, u"--publisher"_s, u"Origin"_s}, "No game has the publisher \"Origin\""},
        {{u"search"_s, u"--series"_s, u"Roman"_s}, "No game has the series \"Roman\""},
        {{u"search"_s, u"--platform"_s, u"Amiga"_s}, "No game has the platform \"Amiga\""},
        {{u"search"_s, u"--playlist"_s, u"Worst"_s}, "No playlist has the id or name \"Worst\""},
        {{u"playlists"_s, u"Worst"_s}, "No playlist has the id or name \"Worst\""},
        {{u"collections"_s, u"70s"_s}, "No collection has the id or name \"70s\""},
        {{u"favorite"_s, u"Gamma"_s}, "No game has the id or title \"Gamma\""},
        {{u"status"_s, u"Gamma"_s}, "No game has the id or title \"Gamma\""},
    };
    for (const auto &row : rows) {
        const CliResult result = run(row.arguments.first(), row.arguments.sliced(1));
        EXPECT_EQ(result.status, 1) << row.text;
        EXPECT_EQ(result.output, "") << row.text;
        EXPECT_EQ(result.errorLines(), 1) << result.errors.toStdString();
        EXPECT_TRUE(result.errors.contains(row.text)) << result.errors.toStdString();
    }
    const CliResult several = run(u"collections"_s, {u"classics"_s});
    EXPECT_EQ(several.status, 1);
    EXPECT_TRUE(several.errors.contains("80s-classics") && several.errors.contains("names 2 collections"))
        << several.errors.toStdString();
}

TEST_F(CliLibrary, ListsPlaylistsCollectionsFacetsAndGroups) {
    collection.put(u"Data/Playlists/Worn.xml"_s,
                   "<LaunchBox><Playlist><PlaylistId>worn</PlaylistId><Name>Worn</Name></Playlist>"
                   "<PlaylistGame><GameId>alpha</GameId></PlaylistGame><PlaylistGame><GameId>lost</GameId>"
                   "</PlaylistGame><PlaylistGame><GameId>alpha</GameId></PlaylistGame></LaunchBox>");
    EXPECT_EQ(ids(u"playlists"_s, {u"BEST"_s}), QStringList{u"writer-id"_s});
    EXPECT_EQ(ids(u"playlists"_s, {u"worn"_s}), QStringList{u"alpha"_s});
    EXPECT_EQ(jsonOf(u"playlists"_s).value(u"playlists"_s).toArray()[1][u"gameCount"_s], 1);

    playTwoGames();
    QHash<QString, int> counts;
    for (const QJsonValue &value : jsonOf(u"collections"_s).value(u"collections"_s).toArray())
        counts[value[u"section"_s].toString() + u'/' + value[u"ID"_s].toString()] = value[u"gameCount"_s].toInt();
    EXPECT_EQ(counts.size(), 29);
    EXPECT_EQ(counts[u"Smart Collections/unplayed"_s], 5);
    EXPECT_EQ(counts[u"Smart Collections/installed"_s], 2);
    EXPECT_EQ(counts[u"Studios/sierra-games"_s], 2);
    EXPECT_EQ(counts[u"Genres/genre-puzzle"_s], 1);
    EXPECT_EQ(ids(u"collections"_s, {u"most-played"_s}), (QStringList{u"alpha"_s, u"beta"_s}));

    const QJsonObject facets = jsonOf(u"facets"_s);
    EXPECT_EQ(facets.keys(),
              (QStringList{u"developers"_s, u"genres"_s, u"publishers"_s, u"schema"_s, u"seriesNames"_s, u"years"_s}));
    EXPECT_EQ(facets.value(u"genres"_s).toArray(), (QJsonArray{u"Action"_s, u"Adventure"_s, u"Puzzle"_s}));
    EXPECT_EQ(facets.value(u"publishers"_s).toArray(), (QJsonArray{u"Plum"_s, u"Sierra"_s}));
    EXPECT_EQ(facets.value(u"years"_s).toArray(), (QJsonArray{1985, 1990, 1991}));
    EXPECT_EQ(jsonOf(u"facets"_s, {u"series"_s}).keys(), (QStringList{u"schema"_s, u"seriesNames"_s}));
    EXPECT_EQ(run(u"facets"_s, {u"years"_s}).output, "FACET  VALUE\nyears  1985\nyears  1990\nyears  1991\n");

    const QJsonArray groups = jsonOf(u"groups"_s).value(u"groups"_s).toArray();
    ASSERT_EQ(groups.size(), 1);
    EXPECT_EQ(groups[0][u"normalizedTitle"_s].toString(), u"writer"_s);
    EXPECT_EQ(groups[0][u"primaryID"_s].toString(), u"writer-id"_s);
    EXPECT_EQ(members(groups[0][u"variants"_s].toArray(), "ID"), (QStringList{u"writer-id"_s, u"talkie"_s}));
    for (const QStringList &none : {QStringList{u"--search"_s, u"talkie"_s}, QStringList{u"--limit"_s, u"0"_s}})
        EXPECT_EQ(jsonOf(u"groups"_s, none).value(u"groups"_s).toArray(), QJsonArray());
}

TEST_F(CliLibrary, KeepsWhatTheUserGivesAGame) {
    const auto given = [this] {
        const QJsonObject game = jsonOf(u"show"_s, {u"alpha"_s});
        return QJsonArray{game.value(u"favorite"_s), game.value(u"userRating"_s), game.value(u"userNotes"_s),
                          game.value(u"gameProgress"_s)};
    };
    const QJsonArray nothing{false, QJsonValue::Undefined, QJsonValue::Undefined, u"notPlayed"_s};
    EXPECT_EQ(given(), nothing);
    const struct {
        const char *command;
        QString value;
        const char *printed;
    } rows[] = {
        {"favorite", {}, "Alpha is a favorite.\n"},
        {"favorite", {}, "Alpha is a favorite.\n"}, // twice is no less
        {"rate", u"4"_s, "Alpha: 4 of 5\n"},
        {"note", u"Größe\n\x1b[31m"_s, "Größe\n\x1b[31m"}, // as it is, to what is no terminal
        {"progress", u"mastered"_s, "Alpha: Mastered\n"},
        {"rate", {}, "Alpha: 4 of 5\n"},
        {"note", {}, "Größe\n\x1b[31m"},
        {"progress", {}, "Alpha: Mastered\n"},
    };
    for (const auto &row : rows) {
        QStringList rest{u"alpha"_s};
        if (!row.value.isNull())
            rest << row.value;
        const CliResult result = run(QString::fromUtf8(row.command), rest);
        EXPECT_EQ(result.status, 0) << result.errors.toStdString();
        EXPECT_EQ(result.output, row.printed);
    }
    EXPECT_EQ(given(), (QJsonArray{true, 4, u"Größe\n\x1b[31m"_s, u"mastered"_s}));
    const QJsonObject data = jsonOf(u"rate"_s, {u"alpha"_s});
    EXPECT_EQ(data.value(u"favorite"_s), QJsonValue(true));
    EXPECT_EQ(data.value(u"gameProgress"_s).toString(), u"mastered"_s);

    for (const QStringList &arguments : {QStringList{u"favorite"_s, u"alpha"_s, u"--off"_s},
                                         {u"rate"_s, u"alpha"_s, u"0"_s},
                                         {u"note"_s, u"alpha"_s, u"--clear"_s},
                                         {u"progress"_s, u"alpha"_s, u"notPlayed"_s}})
        EXPECT_EQ(run(arguments.first(), arguments.sliced(1)).status, 0);
    EXPECT_EQ(given(), nothing);
    EXPECT_EQ(run(u"note"_s, {u"alpha"_s}).output, "");
}

TEST_F(CliLibrary, FailsWhenAChangeCannotBeStored) {
    QTemporaryDir small;
    const test::Mount mount = test::Mount::memory(small.path(), u"1m"_s);
    if (!mount.ok())
        GTEST_SKIP() << mount.reason().toStdString();
    const QStringList onSmall{u"--home"_s, small.path(), u"--collection"_s, collection.path()};
    const auto runThere = [&](const QStringList &rest) {
        return cli.runProgram(test::CliRun::program(), onSmall + rest);
    };
    ASSERT_EQ(runThere({u"favorite"_s, u"beta"_s}).status, 0);
    QFile filler(small.filePath(u"filler"_s));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(512, 'x')) == 512) {
    }
    // More than what the files have left of their last blocks.
    const CliResult result = runThere({u"note"_s, u"alpha"_s, QString(60'000, u'n')});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains("No space left on device")) << result.errors.toStdString();
    EXPECT_EQ(result.output, "");
}

TEST_F(CliLibrary, TellsWhatWasPlayed) {
    EXPECT_EQ(ids(u"recent"_s), QStringList());
    EXPECT_EQ(jsonOf(u"stats"_s).value(u"longestStreak"_s).toInt(), 0);
    playTwoGames();
    EXPECT_EQ(ids(u"recent"_s), (QStringList{u"alpha"_s, u"beta"_s}));

    const QJsonObject stats = jsonOf(u"stats"_s);
    const std::pair<const char *, double> figures[] = {
        {"totalPlayTime", 3660},        {"playedCount", 2},   {"installedCount", 2}, {"favoriteCount", 0},
        {"averageSessionLength", 1830}, {"currentStreak", 2}, {"longestStreak", 2},
    };
    for (const auto &[name, expected] : figures)
        EXPECT_EQ(stats.value(QString::fromUtf8(name)).toDouble(-1), expected) << name;
    const int days = stats.value(u"daysPlayedThisMonth"_s).toInt();
    EXPECT_TRUE(days == 2 || (days == 1 && QDate::currentDate().day() == 1)) << days;
    EXPECT_EQ(stats.value(u"platformPlayTime"_s).toArray(),
              (QJsonArray{QJsonObject{{u"Name"_s, u"ScummVM"_s}, {u"playTime"_s, 3660}}}));
    EXPECT_EQ(members(stats.value(u"genrePlayTime"_s).toArray(), "Name"),
              (QStringList{u"Action"_s, u"Adventure; Puzzle"_s}));
    EXPECT_EQ(members(stats.value(u"mostPlayedGames"_s).toArray(), "ID"), (QStringList{u"beta"_s, u"alpha"_s}));
    const QJsonArray history = stats.value(u"playHistory"_s).toArray();
    ASSERT_EQ(history.size(), 30);
    EXPECT_DOUBLE_EQ(history[28][u"playTime"_s].toDouble(), 3600);
    EXPECT_DOUBLE_EQ(history[29][u"playTime"_s].toDouble(), 60);
    EXPECT_TRUE(run(u"show"_s, {u"alpha"_s}).output.contains("Played:       1 time\nPlay time:    1m\n"))
        << run(u"show"_s, {u"alpha"_s}).output.toStdString();
    const CliResult printed = run(u"stats"_s);
    EXPECT_TRUE(printed.output.contains("Total play time:    1h 1m\n") && printed.output.contains("2 days"))
        << printed.output.toStdString();
}

/// Notes of each member of a value how it is spelled and of which form it is, and what stands for no value.
void lookAt(const QJsonValue &value, const QString &where, QMap<QString, QStringList> &forms, QStringList &unset) {
    if (value.isArray())
        for (const QJsonValue element : value.toArray())
            lookAt(element, where, forms, unset);
    if (!value.isObject())
        return;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QJsonValue member = it.value();
        const QString form = member.isArray()  ? u"list of "_s + QString::number(int(member.toArray().at(0).type()))
                             : member.isNull() ? u"null"_s
                                               : QString::number(int(member.type()));
        QStringList &known = forms[it.key().toLower()];
        const bool emptyList = member.isArray() && member.toArray().isEmpty();
        if (const QString seen = it.key() + u' ' + form; !known.contains(seen) && !emptyList)
            known << seen;
        if (member.isNull() || (member.isString() && member.toString().isEmpty()) ||
            (member.isObject() && member.toObject().isEmpty()))
            unset << where + u' ' + it.key();
        if (it.key() != u"config"_s) // its members are DOSBox's
            lookAt(member, where, forms, unset);
    }
}

TEST_F(CliLibrary, GivesAFieldOneNameAndOneFormInEveryDocument) {
    playTwoGames();
    collection.put(u"Images/ScummVM/Box - Front/Alpha-01.jpg"_s, test::jpegOf(60, 80));
    collection.put(u"Content/XODOSMetadata.zip"_s, "zip");
    ASSERT_EQ(run(u"rate"_s, {u"alpha"_s, u"3"_s}).status, 0);
    ASSERT_EQ(run(u"note"_s, {u"alpha"_s, u"note"_s}).status, 0);
    QMap<QString, QStringList> forms;
    QStringList unset;
    const QStringList commands[] = {{u"load"_s},
                                    {u"refresh"_s},
                                    {u"status"_s},
                                    {u"status"_s, u"alpha"_s},
                                    {u"platforms"_s},
                                    {u"games"_s},
                                    {u"show"_s, u"alpha"_s},
                                    {u"show"_s, u"writer-id"_s},
                                    {u"images"_s, u"alpha"_s},
                                    {u"thumbnails"_s},
                                    {u"playlists"_s},
                                    {u"playlists"_s, u"best"_s},
                                    {u"collections"_s},
                                    {u"facets"_s},
                                    {u"groups"_s},
                                    {u"recent"_s},
                                    {u"stats"_s},
                                    {u"favorite"_s, u"beta"_s},
                                    {u"rate"_s, u"alpha"_s},
                                    {u"rate"_s, u"beta"_s},
                                    {u"note"_s, u"alpha"_s},
                                    {u"note"_s, u"beta"_s},
                                    {u"progress"_s, u"beta"_s},
                                    {u"versions"_s, u"writer-id"_s},
                                    {u"play"_s, u"writer-id"_s, u"--dry-run"_s},
                                    {u"emulators"_s},
                                    {u"setup-status"_s},
                                    {u"batch"_s, u"verify-files"_s, u"--all"_s},
                                    {u"log"_s, u"--path"_s},
                                    {u"show"_s, u"writer"_s + u"nobody"_s}};
    for (const QStringList &command : commands) {
        const CliResult result = run(command.first(), command.sliced(1) + QStringList{u"--json"_s});
        lookAt(json(result), command.join(u' '), forms, unset);
    }
    for (auto it = forms.begin(); it != forms.end(); ++it)
        EXPECT_LE(it->size(), 1) << it->join(u", "_s).toStdString();
    EXPECT_EQ(unset, QStringList());
    EXPECT_GT(forms.size(), 100);
}

TEST_F(CliLibrary, SendsNoLogWithoutAnAddressOrAnAnswer) {
    const CliResult nowhere = run(u"log"_s, {u"--upload"_s, u"--yes"_s});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.errors, "ludarium-cli: No address for log uploads is set.\n");
    {
        SqliteSettingsStore settings(HostPaths::native(cli.home()).settingsFolder());
        settings.setValue(Settings::logUploadURL, u"http://127.0.0.1:1/logs"_s);
    }
    const CliResult unanswered = run(u"log"_s, {u"--upload"_s});
    EXPECT_EQ(unanswered.status, 1);
    EXPECT_TRUE(unanswered.errors.contains("will be redacted") && unanswered.errors.contains("Nothing was sent."))
        << unanswered.errors.toStdString();
    EXPECT_FALSE(run(u"log"_s, {u"--upload"_s, u"--yes"_s}).errors.contains("Nothing was sent."));
}

TEST_F(CliLibrary, TellsTheStepsOfALoadAndUsesTheCacheUntilItIsCleared) {
    for (const bool fromCache : {false, true}) {
        const QJsonObject load = jsonOf(u"load"_s);
        EXPECT_EQ(load.value(u"fromCache"_s), QJsonValue(fromCache));
        EXPECT_EQ(load.value(u"gameCount"_s).toInt(), 7);
        EXPECT_EQ(load.value(u"playlistCount"_s).toInt(), 1);
        const QJsonArray steps = load.value(u"steps"_s).toArray();
        ASSERT_GT(steps.size(), 5);
        EXPECT_EQ(steps.first()[u"message"_s].toString(), u"Checking collection..."_s);
        EXPECT_EQ(steps.last()[u"message"_s].toString(),
                  fromCache ? u"Ready! Loaded 7 games from cache ⚡"_s
                            : u"Complete! Loaded 7 games. Next launch will be much faster!"_s);
        for (qsizetype i = 1; i < steps.size(); ++i)
            EXPECT_GE(steps[i][u"milliseconds"_s].toInt(), steps[i - 1][u"milliseconds"_s].toInt());
        EXPECT_GE(load.value(u"milliseconds"_s).toInt(), steps.last()[u"milliseconds"_s].toInt());
    }
    const CliResult printed = run(u"load"_s);
    EXPECT_TRUE(printed.output.contains(" ms    0 %  Checking collection...\n") &&
                printed.output.contains("From cache:  yes\n"))
        << printed.output.toStdString();

    collection.put(u"Data/Platforms/More.xml"_s,
                   "<LaunchBox><Game><ID>more</ID><Title>More</Title><Platform>MS-DOS</Platform></Game></LaunchBox>");
    EXPECT_EQ(jsonOf(u"refresh"_s).value(u"gameCount"_s).toInt(), 7);
    EXPECT_EQ(jsonOf(u"refresh"_s, {u"--clear-cache"_s}).value(u"gameCount"_s).toInt(), 8);
}

TEST_F(CliLibrary, TellsWhatTheDiskHasNotWhatTheCacheRemembers) {
    const auto counts = [this] {
        QStringList result;
        const QJsonObject status = jsonOf(u"status"_s);
        QJsonArray rows = status.value(u"platforms"_s).toArray();
        rows.append(status.value(u"total"_s));
        for (const QJsonValue &row : rows)
            result << u"%1: %2 = %3 + %4"_s.arg(row[u"Name"_s].toString())
                          .arg(row[u"gameCount"_s].toInt())
                          .arg(row[u"installedCount"_s].toInt())
                          .arg(row[u"missingCount"_s].toInt());
        return result;
    };
    const auto stateOfWriter = [this] { return jsonOf(u"status"_s, {u"writer-id"_s}).value(u"state"_s).toString(); };
    EXPECT_EQ(counts(), (QStringList{u"MS-DOS: 4 = 2 + 2"_s, u"ScummVM: 3 = 0 + 3"_s, u": 7 = 2 + 5"_s}));
    EXPECT_EQ(stateOfWriter(), u"installed"_s);

    ASSERT_TRUE(QDir(collection.file(u"eXo/eXoDOS/writer"_s)).removeRecursively());
    EXPECT_EQ(stateOfWriter(), u"missing"_s);
    EXPECT_EQ(counts(), (QStringList{u"MS-DOS: 4 = 1 + 3"_s, u"ScummVM: 3 = 0 + 3"_s, u": 7 = 1 + 6"_s}));
}

TEST_F(CliLibrary, TellsWhatOfTheSetsIsUnpacked) {
    collection.put(u"Content/!DOSmetadata.zip"_s, "zip");
    collection.put(u"Content/XODOSMetadata.zip"_s, "zip");
    const QJsonObject status = jsonOf(u"setup-status"_s);
    EXPECT_EQ(status.value(u"needsSetup"_s), QJsonValue(true));
    const QJsonArray sets = status.value(u"sets"_s).toArray();
    ASSERT_EQ(members(sets, "Name"), QStringList{u"eXoDOS"_s});
    EXPECT_EQ(sets[0][u"metadataArchiveName"_s].toString(), u"!DOSmetadata.zip"_s);
    EXPECT_EQ(sets[0][u"hasXOMetadata"_s], QJsonValue(true));
    EXPECT_EQ(sets[0][u"xoMetadataExtracted"_s], QJsonValue(false));
    const CliResult printed = run(u"setup-status"_s);
    EXPECT_TRUE(printed.output.contains("\neXoDOS  unpacked  packed       yes\n") ||
                printed.output.contains("\neXoDOS  incomplete  packed       yes\n"))
        << printed.output.toStdString();

    const CliResult none = cli.run({u"setup-status"_s, u"--collection"_s, collection.file(u"missing"_s)});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.errorLines(), 1) << none.errors.toStdString();
}

TEST_F(CliLibrary, ListsPicturesAndCopiesCovers) {
    collection.put(u"Images/ScummVM/Box - Front/Alpha-01.jpg"_s, test::jpegOf(600, 800));
    collection.put(u"Images/ScummVM/Disc/Alpha-01.jpg"_s, "no picture");
    collection.put(u"Videos/ScummVM/Alpha (1991).mp4"_s, "video");
    const QJsonObject images = jsonOf(u"images"_s, {u"alpha"_s});
    EXPECT_EQ(images.value(u"cover"_s)[u"path"_s], collection.file(u"Images/ScummVM/Box - Front/Alpha-01.jpg"_s));
    EXPECT_EQ(members(images.value(u"images"_s).toArray(), "Name"), (QStringList{u"Box Art"_s, u"Disc"_s}));
    EXPECT_EQ(images.value(u"video"_s), collection.file(u"Videos/ScummVM/Alpha (1991).mp4"_s));
    EXPECT_TRUE(run(u"images"_s, {u"alpha"_s}).output.contains("cover flow  Box Art  "));

    for (const int cached : {1, 0}) {
        const QJsonObject thumbnails = jsonOf(u"thumbnails"_s, {u"--platform"_s, u"scummvm"_s});
        EXPECT_EQ(thumbnails.value(u"gameCount"_s), 3);
        EXPECT_EQ(thumbnails.value(u"cachedCount"_s), cached);
        EXPECT_EQ(thumbnails.value(u"skippedCount"_s), 3 - cached);
    }
    const QString copies = HostPaths::native(cli.home()).caches() + u"/thumbnails"_s;
    const QFileInfoList files = QDir(copies).entryInfoList(QDir::Files);
    ASSERT_EQ(files.size(), 1);
    const auto others = QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    EXPECT_FALSE((files[0].permissions() | QFileInfo(copies).permissions()) & others);
}

TEST_F(CliLibrary, DoesOneThingToManyGames) {
    const QJsonObject favorites = jsonOf(u"batch"_s, {u"add-to-favorites"_s, u"beta"_s, u"alpha"_s});
    EXPECT_EQ(favorites.value(u"operation"_s), u"addToFavorites"_s);
    EXPECT_EQ(members(favorites.value(u"results"_s).toArray(), "Title"), (QStringList{u"Alpha"_s, u"Beta"_s}));
    EXPECT_EQ(ids(u"search"_s, {u"--favorites"_s}), (QStringList{u"alpha"_s, u"beta"_s}));

    const QString folder = collection.file(u"eXo/eXoDOS/writer"_s);
    const CliResult unasked = run(u"batch"_s, {u"uninstall"_s, u"writer-id"_s});
    EXPECT_EQ(unasked.status, 1);
    EXPECT_TRUE(unasked.errors.contains("Remove the files of 1 game")) << unasked.errors.toStdString();
    EXPECT_TRUE(QDir(folder).exists());
    const CliResult kept = run(u"batch"_s, {u"uninstall"_s, u"writer-id"_s, u"--yes"_s});
    EXPECT_EQ(kept.output, "[1/1] Writer: Kept, as it is the only copy: it has no archive\n"
                           "Uninstall Games: 0 done, 0 failed, 1 skipped\n");
    const CliResult unanswered = run(u"batch"_s, {u"uninstall"_s, u"writer-id"_s, u"--without-archive"_s});
    EXPECT_EQ(unanswered.status, 1);
    EXPECT_TRUE(unanswered.errors.contains("Nothing can bring back what has no archive."))
        << unanswered.errors.toStdString();
    EXPECT_TRUE(QDir(folder).exists());
    collection.put(u"eXo/eXoDOS/Writer (1991).zip"_s, test::gameArchive(u"writer"_s));
    const CliResult removed = run(u"batch"_s, {u"uninstall"_s, u"writer-id"_s, u"alpha"_s, u"--yes"_s});
    EXPECT_EQ(removed.status, 0) << removed.errors.toStdString();
    EXPECT_EQ(removed.output, "[1/2] Writer: Uninstalled successfully\n[2/2] Alpha: Not installed\n"
                              "Uninstall Games: 1 done, 0 failed, 1 skipped\n");
    EXPECT_FALSE(QDir(folder).exists());
    EXPECT_TRUE(QDir(collection.file(u"eXo/eXoDOS/!dos/writer"_s)).exists());
    EXPECT_EQ(ids(u"search"_s, {u"--installed"_s}), QStringList{u"endless-id"_s});
    EXPECT_EQ(run(u"batch"_s, {u"uninstall"_s, u"endless-id"_s, u"--without-archive"_s, u"--yes"_s}).status, 0);
    EXPECT_FALSE(QDir(collection.file(u"eXo/eXoDOS/endless"_s)).exists());

    const struct {
        QStringList arguments;
        int status;
        const char *text;
    } rows[] = {
        {{u"install"_s, u"--not-installed"_s}, 1, "Installing games is not available"},
        {{u"verifyFiles"_s, u"--all"_s}, 0, "Verify Files: 0 done, 0 failed, 7 skipped"},
        {{u"verify-files"_s, u"--all"_s, u"--without-archive"_s}, 2, "belongs to uninstall"},
        {{u"polish"_s, u"--all"_s}, 2, "\"polish\" is no operation"},
        {{u"verify-files"_s}, 2, "Name games"},
        {{u"verify-files"_s, u"--all"_s, u"alpha"_s}, 2, "Name games"},
        {{u"verify-files"_s, u"nobody"_s}, 1, "No game has the id or title"},
    };
    for (const auto &row : rows) {
        const CliResult result = run(u"batch"_s, row.arguments);
        EXPECT_EQ(result.status, row.status) << row.text;
        EXPECT_TRUE((result.output + result.errors).contains(row.text))
            << row.text << ": " << result.output.toStdString() << result.errors.toStdString();
    }
}

} // namespace
} // namespace ludarium
