#include "Host/AppLogger.h"

#include "Host/HostPaths.h"
#include "support/TestHost.h"

#include <QRegularExpression>
#include <sys/stat.h>
#include <thread>

using namespace ludarium;

namespace {

class AppLoggerTest : public testing::Test {
  protected:
    QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("a/b/logs"));
    const QString file = folder + QStringLiteral("/ludarium.log");
    const QString old = file + QStringLiteral(".1");

    static void log(AppLogger &logger, const QString &message) {
        logger.log(LogLevel::Info, message, std::source_location::current());
    }
    static QByteArray bytes(const QString &path) {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("no file");
    }
    /// Brings the log to exactly `size` bytes and the logger to rest.
    void growTo(AppLogger &logger, qint64 size) {
        logger.flush();
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::Append));
        out.write(QByteArray(size - out.size(), 'x'));
    }
};

} // namespace

TEST_F(AppLoggerTest, WritesOneLineWithTimeLevelAndPlaceForEachMessage) {
    AppLogger logger(folder);
    const auto here = std::source_location::current();
    for (const LogLevel level : {LogLevel::Debug, LogLevel::Info, LogLevel::Warning, LogLevel::Error})
        logger.log(level, QStringLiteral("✅ fünf"), here);
    const QString text = logger.text();
    const QRegularExpression lines(
        QStringLiteral(
            R"(\n(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] \[(DEBUG|INFO|WARN|ERROR)\] \[AppLogger_test\.cpp:%1\] ✅ fünf\n){4}$)")
            .arg(here.line()));
    EXPECT_TRUE(lines.match(text).hasMatch()) << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("[WARN] [")));
    EXPECT_TRUE(test::await(logger.readAll()) == text);
}

TEST_F(AppLoggerTest, LetsNoMessageForgeALine) {
    AppLogger logger(folder);
    logger.flush();
    const qsizetype before = logger.text().count(QLatin1Char('\n'));
    log(logger, QStringLiteral("Doom\n[2026-01-01] [ERROR]\r\v\f\u0085\u2028\u2029\x1b[2J\tend"));
    const QString text = logger.text();
    EXPECT_EQ(text.count(QLatin1Char('\n')), before + 1);
    EXPECT_TRUE(text.endsWith(QLatin1String("] Doom [2026-01-01] [ERROR]       [2J end\n"))) << text.toStdString();
}

TEST_F(AppLoggerTest, BeginsEachSessionWithABanner) {
    for (int session = 0; session < 2; ++session) {
        AppLogger logger(folder);
        const QStringList lines = logger.text().split(QLatin1Char('\n'));
        const qsizetype first = qsizetype(session) * 11;
        ASSERT_EQ(lines.size(), first + 12);
        const QString rule(60, QLatin1Char('='));
        const MachineInfo machine = MachineInfo::current();
        EXPECT_EQ(lines[first], QString());
        for (const qsizetype index : {1, 3, 10})
            EXPECT_EQ(lines[first + index], rule);
        EXPECT_EQ(lines[first + 2], QStringLiteral("Ludarium Session Started"));
        EXPECT_TRUE(lines[first + 4].startsWith(QLatin1String("Timestamp: 2")));
        EXPECT_EQ(lines[first + 5], QStringLiteral("App Version: " LUDARIUM_VERSION " (Unknown)"));
        EXPECT_EQ(lines[first + 6], QStringLiteral("System: ") + machine.systemVersion);
        EXPECT_EQ(lines[first + 7], QStringLiteral("Hardware: ") + machine.hardwareModel);
        EXPECT_TRUE(QRegularExpression(QStringLiteral(R"(^Memory: \d+\.\d GB$)")).match(lines[first + 8]).hasMatch());
        EXPECT_EQ(lines[first + 9], QStringLiteral("Host: ") + machine.hostName);
    }
}

TEST_F(AppLoggerTest, RotatesAboveItsSizeAndKeepsOneOldLog) {
    AppLogger logger(folder);
    logger.flush();
    QFile stale(old);
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.write("stale");
    stale.close();
    growTo(logger, AppLogger::maxLogSize);
    log(logger, QStringLiteral("fits"));
    logger.flush();
    EXPECT_EQ(bytes(old), "stale") << "a log of exactly the limit stays";
    EXPECT_TRUE(bytes(file).endsWith("fits\n"));

    log(logger, QStringLiteral("next"));
    logger.flush();
    EXPECT_TRUE(bytes(old).endsWith("fits\n"));
    EXPECT_TRUE(bytes(file).endsWith("next\n"));
    EXPECT_LT(bytes(file).size(), 200);
}

TEST_F(AppLoggerTest, BeginsAnewWhenCleared) {
    AppLogger logger(folder);
    log(logger, QStringLiteral("gone"));
    logger.clearLogs();
    log(logger, QStringLiteral("kept"));
    const QString text = logger.text();
    EXPECT_FALSE(text.contains(QLatin1String("gone")));
    EXPECT_TRUE(text.startsWith(QLatin1Char('\n') + QString(60, QLatin1Char('='))));
    EXPECT_TRUE(text.endsWith(QLatin1String("kept\n")));
}

TEST_F(AppLoggerTest, KeepsTheLinesOfManyThreadsAndTwoLoggersWhole) {
    AppLogger one(folder);
    AppLogger two(folder);
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 6; ++thread)
            threads.emplace_back([&, thread] {
                for (int i = 0; i < 500; ++i)
                    log(thread % 2 ? one : two, QStringLiteral("thread %1 line %2 end").arg(thread).arg(i));
            });
    }
    one.flush();
    const QStringList lines = two.text().split(QLatin1Char('\n'));
    for (int thread = 0; thread < 6; ++thread) {
        const QStringList own = lines.filter(QStringLiteral("thread %1 line").arg(thread));
        ASSERT_EQ(own.size(), 500);
        for (int i = 0; i < 500; ++i)
            EXPECT_TRUE(own[i].endsWith(QStringLiteral("] thread %1 line %2 end").arg(thread).arg(i)));
    }
}

TEST_F(AppLoggerTest, LosesLinesButNeverFailsOrHangsWhereNoLogCanBe) {
    QFile inTheWay(root.filePath(QStringLiteral("a")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    {
        AppLogger logger(folder);
        log(logger, QStringLiteral("lost"));
        logger.clearLogs();
        EXPECT_EQ(logger.text(), QString());
    }
    // A pipe that nobody reads would block whoever opens or fills it.
    const QString piped = root.filePath(QStringLiteral("piped"));
    QDir().mkpath(piped);
    ASSERT_EQ(::mkfifo(QFile::encodeName(piped + QStringLiteral("/ludarium.log")).constData(), 0600), 0);
    AppLogger logger(piped);
    log(logger, QStringLiteral("lost"));
    logger.flush();
}

TEST_F(AppLoggerTest, ComesBackWhenTheLogIsRemovedUnderIt) {
    AppLogger logger(folder);
    logger.flush();
    QFile::remove(file);
    log(logger, QStringLiteral("here again"));
    EXPECT_TRUE(logger.text().endsWith(QLatin1String("here again\n")));
}

TEST_F(AppLoggerTest, RedactsSecretsAndKeepsTheLogFromOtherUsers) {
    AppLogger logger(folder);
    log(logger, QStringLiteral("GET https://example.com/a?apikey=sesame&x=1"));
    const QString text = logger.text();
    EXPECT_FALSE(text.contains(QLatin1String("sesame")));
    EXPECT_TRUE(text.contains(QLatin1String("&x=1")));
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST_F(AppLoggerTest, IsReachedByTheLogFunctionsWhileItLives) {
    AppLogger *const before = AppLogger::shared();
    AppLogger::setShared(nullptr);
    Log::info(QStringLiteral("dropped"));
    {
        AppLogger logger(folder);
        AppLogger::setShared(&logger);
        Log::warning(QStringLiteral("kept"));
        EXPECT_TRUE(logger.text().endsWith(QLatin1String("kept\n")));
        EXPECT_TRUE(logger.text().contains(QLatin1String("[WARN] [AppLogger_test.cpp:")));
    }
    EXPECT_EQ(AppLogger::shared(), nullptr);
    Log::error(QStringLiteral("dropped"));
    EXPECT_FALSE(bytes(file).contains("dropped"));
    AppLogger::setShared(before);
}
