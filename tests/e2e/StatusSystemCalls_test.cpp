#include "Models/Game.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/InstallationStatus.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The status check is made for network drives, where every system call on a file waits for the other side: strace
// counts them for a small library and for a large one over the same folders.

namespace ludarium {

namespace {

constexpr auto collectionVariable = "LUDARIUM_STATUS_PROBE";
constexpr auto gamesVariable = "LUDARIUM_STATUS_PROBE_GAMES";

GameList gamesOf(int count, const QString &platform) {
    GameList games;
    for (int i = 0; i < count; ++i) {
        auto game = std::make_shared<Game>();
        game->id = QString::number(i);
        game->title = QStringLiteral("Game %1").arg(i);
        game->searchTitle = game->title.toLower().toUtf8();
        game->platform = platform;
        game->configurationPath = QStringLiteral("eXo\\eXoDOS\\!dos\\game%1\\dosbox.conf").arg(i);
        games.append(std::move(game));
    }
    return games;
}

/// Calls that name a file or list a folder, by the status check of `games` games.
int fileCalls(const QString &collection, int games) {
    QProcess strace;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(collectionVariable), collection);
    environment.insert(QString::fromLatin1(gamesVariable), QString::number(games));
    strace.setProcessEnvironment(environment);
    const QString log = collection + QStringLiteral("/trace");
    strace.start(QStringLiteral("strace"),
                 {QStringLiteral("-f"), QStringLiteral("-o"), log, QStringLiteral("-e"),
                  QStringLiteral("trace=%file,getdents64"), QCoreApplication::applicationFilePath(),
                  QStringLiteral("--gtest_filter=StatusProbe.*"), QStringLiteral("--gtest_also_run_disabled_tests")});
    EXPECT_TRUE(strace.waitForFinished(60'000));
    EXPECT_EQ(strace.exitCode(), 0) << strace.readAllStandardOutput().toStdString();
    QFile file(log);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    int calls = 0;
    bool counting = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (line.contains("/status-probe-begin"))
            counting = true;
        else if (line.contains("/status-probe-end"))
            return calls;
        else // the C library asks the kernel about processors when threads start
            calls += counting && !line.contains("\"/sys/") && !line.contains("\"/proc/");
    }
    ADD_FAILURE() << "the probe did not run";
    return 0;
}

class StatusSystemCalls : public testing::Test {
  protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("strace")).isEmpty())
            GTEST_SKIP() << "strace is not installed";
        for (int i = 0; i < 400; ++i) {
            put(QStringLiteral("eXo/eXoDOS/game%1/x").arg(i));
            put(QStringLiteral("eXo/eXoDOS/Archive %1.zip").arg(i));
        }
        if (fileCalls(collection.path(), 1) == 0)
            GTEST_SKIP() << "strace cannot trace here";
    }

    void put(const QString &path, const QByteArray &content = {}) {
        const QString file = collection.filePath(path);
        QDir().mkpath(file.section(u'/', 0, -2));
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(content) == content.size());
    }

    QTemporaryDir collection;
};

} // namespace

// The traced half, run by the tests below.
TEST(StatusProbe, DISABLED_Checks) {
    const QString collection = qEnvironmentVariable(collectionVariable);
    const int count = qEnvironmentVariableIntValue(gamesVariable);
    const auto downloads = std::make_shared<AriaIndexManager>();
    downloads->loadIndex(collection);
    const InstallationStatus status(downloads);
    // Of a platform that is never downloadable, and DOS games that are found.
    GameList games = gamesOf(count, QStringLiteral("ScummVM"));
    games += gamesOf(std::min(count, 400), QStringLiteral("MS-DOS"));
    QFile::exists(QStringLiteral("/status-probe-begin"));
    const auto statuses = status.check(games, collection);
    QFile::exists(QStringLiteral("/status-probe-end"));
    EXPECT_EQ(statuses.size(), games.size());
    EXPECT_TRUE(statuses.last().isInstalled);
}

TEST_F(StatusSystemCalls, AreThoseOfTheFoldersHoweverManyGamesThereAre) {
    const int few = fileCalls(collection.path(), 10);
    const int many = fileCalls(collection.path(), 20'000);
    EXPECT_EQ(many, few);
    // Ten folders, each opened, looked at and listed, the one of 800 names in a few turns.
    EXPECT_LT(few, 60);
}

TEST_F(StatusSystemCalls, AreOneMoreAnArchiveInALiteCollection) {
    const int full = fileCalls(collection.path(), 10);
    put(QStringLiteral("eXo/util/aria/eXoDOS_index.txt"), "1:2MB:eXo/eXoDOS/Other.zip");
    const int lite = fileCalls(collection.path(), 10);
    EXPECT_EQ(lite - full, 400);
    EXPECT_EQ(fileCalls(collection.path(), 20'000), lite);
}

} // namespace ludarium
