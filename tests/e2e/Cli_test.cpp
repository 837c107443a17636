#include "e2e/CliRun.h"

#include "Host/HostPaths.h"
#include "e2e/WindowRun.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace ludarium {
namespace {

using test::CliResult;
using test::CliRun;
using test::hasDosbox;
using test::json;
using test::members;
using test::snapshot;
using test::TinyCollection;

class Cli : public testing::Test {
  protected:
    CliRun cli;
    TinyCollection collection;

    QStringList on(const QStringList &rest) const {
        return QStringList{QStringLiteral("--collection"), collection.path()} + rest;
    }
    CliResult run(const QStringList &rest) const { return cli.run(on(rest)); }
    /// The journal of an open play session.
    /// Journals of sessions that are not stored yet.
    QStringList openSessions() const {
        return QDir(HostPaths::native(cli.home()).state()).entryList({u"session*.json"_s}, QDir::Files);
    }
};

TEST_F(Cli, ListsPlatformsGamesAndPlaylists) {
    cli.trustInstalled();
    const auto before = snapshot(collection.path());
    const QJsonArray platformList =
        json(run({QStringLiteral("platforms"), QStringLiteral("--json")})).value(QStringLiteral("platforms")).toArray();
    ASSERT_EQ(members(platformList, "Name"), QStringList{QStringLiteral("MS-DOS")});
    EXPECT_EQ(platformList[0].toObject().value(QStringLiteral("gameCount")).toInt(), 4);
    EXPECT_EQ(platformList[0].toObject().value(QStringLiteral("installedCount")).toInt(), 4);

    const CliResult platforms = run({QStringLiteral("platforms")});
    EXPECT_EQ(platforms.status, 0) << platforms.errors.toStdString();
    EXPECT_EQ(platforms.errors, "");
    EXPECT_TRUE(platforms.output.startsWith("PLATFORM")) << platforms.output.toStdString();

    const QJsonArray games =
        json(run({QStringLiteral("games"), QStringLiteral("--json")})).value(QStringLiteral("games")).toArray();
    EXPECT_EQ(members(games, "Title"), (QStringList{QStringLiteral("Endless"), QStringLiteral("Saga One"),
                                                    QStringLiteral("Saga Two"), QStringLiteral("Writer")}));
    const CliResult listed =
        run({QStringLiteral("games"), QStringLiteral("--search"), QStringLiteral("SAGA"), QStringLiteral("--platform"),
             QStringLiteral("ms-dos"), QStringLiteral("--limit"), QStringLiteral("1")});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.output.count('\n'), 2);
    EXPECT_TRUE(listed.output.contains("Saga One"));

    const QJsonArray playlists =
        json(run({QStringLiteral("playlists"), QStringLiteral("--json")})).value(QStringLiteral("playlists")).toArray();
    EXPECT_EQ(members(playlists, "Name"), QStringList{QStringLiteral("Best")});
    EXPECT_EQ(playlists[0].toObject().value(QStringLiteral("GameIDs")).toArray(),
              QJsonArray{QStringLiteral("writer-id")});
    EXPECT_EQ(snapshot(collection.path()), before);
}

TEST_F(Cli, ShowsAGameWithEveryFieldOfItsRecord) {
    cli.trustInstalled();
    const QJsonObject game = json(run({QStringLiteral("show"), QStringLiteral("writer-id"), QStringLiteral("--json")}));
    EXPECT_EQ(game.value(QStringLiteral("ID")).toString(), QStringLiteral("writer-id"));
    EXPECT_EQ(game.value(QStringLiteral("ReleaseDate")).toString(), QStringLiteral("1991-05-01T00:00:00"));
    EXPECT_EQ(game.value(QStringLiteral("releaseYear")).toInt(), 1991);
    EXPECT_EQ(game.value(QStringLiteral("MaxPlayers")).toInt(), 2);
    EXPECT_EQ(game.value(QStringLiteral("Developer")).toString(), QStringLiteral("Größe & Söhne"));
    EXPECT_EQ(game.value(QStringLiteral("CommunityStarRating")).toDouble(), 4.5);
    EXPECT_EQ(game.value(QStringLiteral("installed")), QJsonValue(true));
    EXPECT_EQ(game.value(QStringLiteral("compressed")), QJsonValue(false));
    EXPECT_EQ(game.value(QStringLiteral("downloadable")), QJsonValue(false));

    for (const QString &text : {QStringLiteral("WRITER"), QStringLiteral("rite")}) {
        const CliResult shown = run({QStringLiteral("show"), text});
        EXPECT_EQ(shown.status, 0);
        EXPECT_TRUE(shown.output.contains("  Größe & Söhne\n")) << shown.output.toStdString();
    }
}

TEST_F(Cli, ListsTheGamesThatAnAmbiguousTitleMeans) {
    const CliResult result = run({QStringLiteral("show"), QStringLiteral("saga")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.contains("saga-1") && result.errors.contains("Saga Two")) << result.errors.toStdString();
    EXPECT_TRUE(result.errors.contains("1990"));
    const CliResult asJson = run({QStringLiteral("show"), QStringLiteral("saga"), QStringLiteral("--json")});
    EXPECT_EQ(asJson.status, 1);
    EXPECT_EQ(members(json(asJson)[QLatin1String("error")][QLatin1String("games")].toArray(), "ID"),
              (QStringList{QStringLiteral("saga-1"), QStringLiteral("saga-2")}));
}

TEST_F(Cli, FailsInOneLine) {
    const QString none = collection.file(QStringLiteral("eXo/eXoDOS/writer"));
    const QString missing = collection.file(QStringLiteral("missing"));
    const struct {
        QStringList arguments;
        int status;
        const char *text;
    } rows[] = {
        {{QStringLiteral("games")}, 1, "No collection path configured. Name one with --collection DIR"},
        {{QStringLiteral("games"), QStringLiteral("--collection"), none},
         1,
         "Invalid collection. Expected folders: Data/, eXo/, Images/"},
        {{QStringLiteral("games"), QStringLiteral("--collection"), missing},
         1,
         "Invalid collection. Expected folders: Data/, eXo/, Images/"},
        {{QStringLiteral("games"), QStringLiteral("--collection"), QStringLiteral("/dev/null")},
         1,
         "Invalid collection."},
        {on({QStringLiteral("show"), QStringLiteral("no such game")}), 1, "no such game"},
        {on({QStringLiteral("games"), QStringLiteral("--platform"), QStringLiteral("Amiga")}), 1, "Amiga"},
        {on({QStringLiteral("play"), QStringLiteral("Saga One")}), 1,
         "File not found: Game is not installed. Please install it first."},
        {on({QStringLiteral("play"), QStringLiteral("Saga One"), QStringLiteral("--dry-run")}), 1,
         "Game is not installed. Please install it first."},
        {{QStringLiteral("dance")}, 2, "dance"},
        {{}, 2, "command is required"},
        {{QStringLiteral("games"), QStringLiteral("--limit"), QStringLiteral("x")}, 2, "--limit"},
    };
    for (const auto &row : rows) {
        const CliResult result = cli.run(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.arguments.join(u' ').toStdString();
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errorLines(), 1) << result.errors.toStdString();
        EXPECT_TRUE(result.errors.contains(row.text)) << result.errors.toStdString();

        const CliResult asJson = cli.run(row.arguments + QStringList{QStringLiteral("--json")});
        EXPECT_EQ(asJson.status, row.status) << row.arguments.join(u' ').toStdString();
        EXPECT_EQ(asJson.errors, "");
        const QJsonObject error = json(asJson).value(QStringLiteral("error")).toObject();
        EXPECT_TRUE(error.value(QStringLiteral("message")).toString().contains(QString::fromUtf8(row.text)))
            << asJson.output.toStdString();
        EXPECT_EQ(error.value(QStringLiteral("exitStatus")).toInt(), row.status);
    }
}

TEST_F(Cli, WritesTheDemoCollectionOnceAndReadsIt) {
    cli.trustInstalled();
    QTemporaryDir folder;
    const QString demo = folder.filePath(QStringLiteral("new/demo"));
    const CliResult written = cli.run({QStringLiteral("demo"), demo});
    EXPECT_EQ(written.status, 0) << written.errors.toStdString();
    EXPECT_TRUE(written.output.contains(demo.toUtf8()));
    const auto before = snapshot(demo);
    const QStringList use{QStringLiteral("--collection"), demo};

    const CliResult platforms = cli.run(use + QStringList{QStringLiteral("platforms")});
    EXPECT_TRUE(platforms.output.contains("MS-DOS")) << platforms.errors.toStdString();
    const QRegularExpressionMatch advice =
        QRegularExpression(QStringLiteral("play \"(.*)\"")).match(QString::fromUtf8(written.output));
    ASSERT_TRUE(advice.hasMatch());
    const CliResult advised = cli.run(use + QStringList{QStringLiteral("show"), advice.captured(1)});
    EXPECT_EQ(advised.status, 0) << advised.errors.toStdString();
    EXPECT_EQ(snapshot(demo), before);

    const CliResult again = cli.run({QStringLiteral("demo"), demo});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.errorLines(), 1) << again.errors.toStdString();
    EXPECT_EQ(snapshot(demo), before);
}

TEST_F(Cli, ReadsWhatItCanOfADamagedCollection) {
    collection.put(QStringLiteral("Data/Platforms/Broken.xml"), "<LaunchBox><Game><ID>1</ID><Title>cut of");
    collection.put(QStringLiteral("Data/Platforms/Empty.xml"), "");
    QFile unreadable(collection.file(QStringLiteral("Data/Platforms/Folder.xml")));
    QDir().mkpath(unreadable.fileName()); // a folder in the place of a file cannot be read, by root neither
    const auto before = snapshot(collection.path());
    const CliResult result = run({QStringLiteral("games"), QStringLiteral("--json")});
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    EXPECT_TRUE(
        members(json(result).value(QStringLiteral("games")).toArray(), "Title").contains(QStringLiteral("Writer")));
    EXPECT_EQ(snapshot(collection.path()), before);
}

TEST_F(Cli, UsesACollectionForOneRunWithoutRememberingIt) {
    ASSERT_EQ(run({QStringLiteral("games")}).status, 0);
    const CliResult result = cli.run({QStringLiteral("games")});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains("No collection path configured")) << result.errors.toStdString();
}

TEST_F(Cli, EscapesTitlesThatWouldSteerTheTerminal) {
    collection.put(QStringLiteral("Data/Platforms/Odd.xml"),
                   "<LaunchBox><Game><ID>odd</ID><Title>a&#x9b;31m&#x202e;b\n\xE6\x97\xA5</Title>"
                   "<Platform>MS-DOS</Platform></Game></LaunchBox>");
    for (const QStringList &arguments : {QStringList{QStringLiteral("games")},
                                         {QStringLiteral("show"), QStringLiteral("odd")},
                                         {QStringLiteral("games"), QStringLiteral("--json")}}) {
        const CliResult result = run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_FALSE(result.output.contains("\xc2\x9b")) << result.output.toStdString();
        EXPECT_TRUE(result.output.contains("\xE6\x97\xA5"));
    }
}

TEST_F(Cli, FailsWhenItsOutputCannotBeWritten) {
    const CliResult result = cli.runProgram(
        QStringLiteral("/bin/sh"),
        QStringList{QStringLiteral("-c"), QStringLiteral("exec \"$0\" \"$@\" >/dev/full"), CliRun::program()} +
            cli.arguments(on({QStringLiteral("games")})));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errorLines(), 1) << result.errors.toStdString();
}

TEST_F(Cli, PlansALaunchAndWritesNothing) {
    if (!hasDosbox())
        GTEST_SKIP() << "no dosbox on this machine";
    const auto before = snapshot(collection.path());
    const QJsonObject plan = json(
        run({QStringLiteral("play"), QStringLiteral("Writer"), QStringLiteral("--dry-run"), QStringLiteral("--json")}));
    EXPECT_EQ(plan.value(QStringLiteral("ID")).toString(), QStringLiteral("writer-id"));
    EXPECT_TRUE(QFileInfo(plan.value(QStringLiteral("program")).toString()).isExecutable());
    EXPECT_TRUE(plan.value(QStringLiteral("arguments")).toArray().contains(QStringLiteral("-conf")));
    EXPECT_FALSE(plan.value(QStringLiteral("decisions")).toArray().isEmpty());
    QString texts;
    for (const QJsonValue &file : plan.value(QStringLiteral("files")).toArray()) {
        texts += file.toObject().value(QStringLiteral("content")).toString();
        EXPECT_FALSE(QFile::exists(file.toObject().value(QStringLiteral("path")).toString()));
    }
    EXPECT_TRUE(texts.contains(QStringLiteral("WRITER.COM"), Qt::CaseInsensitive)) << texts.toStdString();

    const CliResult printed = run({QStringLiteral("play"), QStringLiteral("Writer"), QStringLiteral("--dry-run")});
    EXPECT_EQ(printed.status, 0);
    EXPECT_TRUE(printed.output.contains("Route:")) << printed.output.toStdString();
    EXPECT_EQ(snapshot(collection.path()), before);
    EXPECT_FALSE(QFile::exists(collection.file(QStringLiteral("eXo/eXoDOS/writer/RAN.TXT"))));
}

TEST_F(Cli, StartsNoGameWhoseProgramIsMissingUnlessToldTo) {
    if (!hasDosbox())
        GTEST_SKIP() << "no dosbox on this machine";
    const QString conf = collection.file(QStringLiteral("eXo/eXoDOS/!dos/writer/dosbox.conf"));
    QDir(collection.file(QStringLiteral("eXo/eXoDOS/writer"))).removeRecursively();
    ASSERT_TRUE(QDir().mkpath(collection.file(QStringLiteral("eXo/eXoDOS/writer/DATA"))));
    QFile file(conf);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(conf).path()) && file.open(QIODevice::WriteOnly));
    file.write("[autoexec]\nmount c .\\eXoDOS\\writer\nc:\nlost.exe\nexit\n");
    file.close();
    const QStringList play{QStringLiteral("play"), QStringLiteral("Writer")};
    const CliResult refused = run(play);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errorLines(), 1) << refused.errors.toStdString();
    EXPECT_TRUE(refused.errors.toLower().contains("lost.exe is not in c:\\writer")) << refused.errors.toStdString();
    const QJsonObject proof = json(run(play + QStringList{QStringLiteral("--dry-run"), QStringLiteral("--json")}))
                                  .value(QStringLiteral("proof"))
                                  .toObject();
    EXPECT_EQ(proof.value(QStringLiteral("verdict")).toString(), QStringLiteral("missing"));
    EXPECT_EQ(run(play + QStringList{QStringLiteral("--wait"), QStringLiteral("--anyway")}).status, 0);
}

TEST_F(Cli, PlaysAGameAndWaitsForItsEnd) {
    if (!hasDosbox())
        GTEST_SKIP() << "no dosbox on this machine";
    const CliResult result =
        run({QStringLiteral("play"), QStringLiteral("Writer"), QStringLiteral("--wait"), QStringLiteral("--json")});
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    EXPECT_EQ(json(result).value(QStringLiteral("ended")), QJsonValue(true));
    EXPECT_TRUE(QFile::exists(collection.file(QStringLiteral("eXo/eXoDOS/writer/RAN.TXT"))));

    EXPECT_EQ(openSessions(), QStringList()) << "a short run leaves an open session";
    const QJsonObject played =
        json(run({QStringLiteral("show"), QStringLiteral("writer-id"), QStringLiteral("--json")}));
    EXPECT_EQ(played.value(QStringLiteral("playCount")).toInt(), 1);
    EXPECT_GT(played.value(QStringLiteral("playTime")).toDouble(), 0);
}

TEST_F(Cli, PlaysAGameOfTheDemoCollection) {
    if (!hasDosbox())
        GTEST_SKIP() << "no dosbox on this machine";
    QTemporaryDir folder;
    const QString demo = folder.filePath(QStringLiteral("demo with blanks"));
    ASSERT_EQ(cli.run({QStringLiteral("demo"), demo}).status, 0);
    const QStringList onDemo{QStringLiteral("--collection"), demo};
    const QString game = QStringLiteral("(Self-Running Demo)");
    QProcess process;
    process.setProcessEnvironment(cli.environment);
    process.start(CliRun::program(),
                  cli.arguments(onDemo + QStringList{QStringLiteral("play"), game, QStringLiteral("--wait")}));
    ASSERT_TRUE(process.waitForStarted());
    ASSERT_TRUE(test::startedDosbox(process.processId()));
    QElapsedTimer running;
    running.start();
    ASSERT_TRUE(process.waitForFinished(100'000));
    const double seconds = double(running.elapsed()) / 1000;
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_GT(seconds, 3) << "the demo runs for several seconds";

    const QJsonObject played =
        json(cli.run(onDemo + QStringList{QStringLiteral("show"), game, QStringLiteral("--json")}));
    EXPECT_EQ(played.value(QStringLiteral("playCount")).toInt(), 1);
    EXPECT_NEAR(played.value(QStringLiteral("playTime")).toDouble(), seconds, 4);
    EXPECT_EQ(played.value(QStringLiteral("gameProgress")).toString(), QStringLiteral("playing"))
        << "a game that was played is being played";
    EXPECT_EQ(openSessions(), QStringList());
    QFile score(demo + QStringLiteral("/eXo/eXoDOS/cc2demo/SCORE.DAT"));
    EXPECT_TRUE(score.open(QIODevice::ReadOnly)); // written at the end of its run
}

TEST_F(Cli, LeavesTheGameRunningWhenTheWaitingIsInterrupted) {
    if (!hasDosbox())
        GTEST_SKIP() << "no dosbox on this machine";
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setProcessEnvironment(cli.environment);
    process.start(CliRun::program(), cli.arguments(on({QStringLiteral("play"), QStringLiteral("Endless"),
                                                       QStringLiteral("--wait"), QStringLiteral("--json")})));
    ASSERT_TRUE(process.waitForStarted());
    // It is waiting once it has an emulator as its child.
    ASSERT_TRUE(test::startedDosbox(process.processId()));
    QThread::msleep(500);
    ::kill(pid_t(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(30'000));
    CliResult result{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    const QJsonObject report = json(result);
    EXPECT_EQ(report.value(QStringLiteral("ended")), QJsonValue(false));
    const auto pid = pid_t(report.value(QStringLiteral("pid")).toInt());
    ASSERT_GT(pid, 1);
    EXPECT_EQ(::kill(pid, 0), 0) << "the game has ended with the waiting";
    EXPECT_EQ(openSessions().size(), 1);

    // What keeps the session now stores it when the game has ended, whatever commands come in between.
    const QStringList show{QStringLiteral("show"), QStringLiteral("endless-id"), QStringLiteral("--json")};
    EXPECT_EQ(json(run(show)).value(QStringLiteral("playCount")).toInt(), 1);
    EXPECT_EQ(openSessions().size(), 1);
    ::kill(pid, SIGKILL);
    ASSERT_TRUE(test::eventually([&] { return openSessions().isEmpty(); }));
    const QJsonObject played = json(run(show));
    EXPECT_GE(played.value(QStringLiteral("playTime")).toDouble(), 0.5);
    EXPECT_LE(played.value(QStringLiteral("playTime")).toDouble(), double(timer.elapsed()) / 1000);
}

TEST_F(Cli, SaysThatDosboxIsMissing) {
    if (!hasDosbox())
        GTEST_SKIP() << "covered by the machine itself";
    // Standard folders are searched whatever PATH says, so the program itself has to be out of sight.
    const QString dosbox = QStandardPaths::findExecutable(QStringLiteral("dosbox"));
    // A tracer can say of each of its names that it is not there, also where no mount may be made.
    QStringList hidden{QStringLiteral("-f"),        QStringLiteral("-qq"), QStringLiteral("-o"),
                       QStringLiteral("/dev/null"), QStringLiteral("-e"),  QStringLiteral("inject=%file:error=ENOENT")};
    for (const QString &name : {dosbox, QFileInfo(dosbox).canonicalFilePath(), QStringLiteral("/bin/dosbox")})
        hidden << QStringLiteral("-P") << name;
    const CliResult result = cli.runProgram(QStringLiteral("strace"),
                                            hidden + QStringList{CliRun::program()} +
                                                cli.arguments(on({QStringLiteral("play"), QStringLiteral("Writer")})));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains("DOSBox not found. Please install DOSBox to run this game."))
        << result.errors.toStdString();
}

TEST_F(Cli, ListsEmulatorsWithTheirVersion) {
    const CliResult result = cli.run({QStringLiteral("emulators"), QStringLiteral("--json")});
    EXPECT_EQ(result.status, 0) << result.errors.toStdString();
    const QJsonArray list = json(result).value(QStringLiteral("emulators")).toArray();
    ASSERT_EQ(list.size(), 14);
    const QJsonObject dosbox = list[0].toObject();
    EXPECT_EQ(dosbox.value(QStringLiteral("installed")), QJsonValue(hasDosbox()));
    if (hasDosbox()) {
        EXPECT_FALSE(dosbox.value(QStringLiteral("flavour")).toString().isEmpty());
    }
}

TEST_F(Cli, PrintsItsLogAndWhereItIs) {
    ASSERT_EQ(run({QStringLiteral("games")}).status, 0);
    const CliResult path = cli.run({QStringLiteral("log"), QStringLiteral("--path")});
    EXPECT_EQ(path.status, 0);
    EXPECT_TRUE(path.output.startsWith(cli.home().toUtf8())) << path.output.toStdString();
    const CliResult log = cli.run({QStringLiteral("log")});
    EXPECT_EQ(log.status, 0);
    EXPECT_GT(log.output.count('\n'), 3) << log.output.toStdString();
}

} // namespace
} // namespace ludarium
