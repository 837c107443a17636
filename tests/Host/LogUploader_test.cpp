#include "Host/LogUploader.h"

#include "Host/CurlHttpClient.h"
#include "Host/Settings.h"
#include "support/LoopbackServer.h"
#include "support/TestHost.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace ludarium;
using ludarium::test::await;
using ludarium::test::LoopbackServer;

namespace {

const QByteArray rule(60, '=');

class LogUploaderTest : public testing::Test {
  protected:
    test::TestHost host;
    LoopbackServer server;
    AppLogger logger{host.scratch() + QStringLiteral("/logs")};
    LogUploader uploader{host.host(), logger};

    void answer(int status, const QByteArray &body = {}) {
        LoopbackServer::Response response;
        response.status = status;
        response.body = body;
        server.on(QStringLiteral("/logs"), response);
        host.settings.setValue(Settings::logUploadURL, server.url(QStringLiteral("/logs")).toString());
    }
    QString upload() {
        try {
            return await(uploader.uploadLogs());
        } catch (const std::exception &error) {
            return QStringLiteral("error: ") + QString::fromUtf8(error.what());
        }
    }
    QJsonObject sent() { return QJsonDocument::fromJson(server.requests().constLast().body).object(); }
};

} // namespace

TEST_F(LogUploaderTest, SendsTheWholeOfAShortLogWithoutNames) {
    answer(200, R"({"message":"Thank you"})");
    const QString name = QFileInfo(host.home()).fileName();
    logger.log(LogLevel::Info, QStringLiteral("in /Users/%1/x and /home/%1 and %2").arg(name, host.home()),
               std::source_location::current());
    EXPECT_EQ(upload(), QStringLiteral("Thank you"));
    const LoopbackServer::Request request = server.requests().constFirst();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers.value("content-type"), "application/json");
    EXPECT_EQ(sent().keys(), (QStringList{QStringLiteral("app"), QStringLiteral("logs"), QStringLiteral("timestamp"),
                                          QStringLiteral("version")}));
    EXPECT_EQ(sent()[QLatin1String("app")].toString(), QStringLiteral("Ludarium"));
    EXPECT_EQ(sent()[QLatin1String("version")].toString(), QStringLiteral(LUDARIUM_VERSION));
    EXPECT_EQ(sent()[QLatin1String("timestamp")].toString(),
              host.clock.current.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ")));
    const QString logs = sent()[QLatin1String("logs")].toString();
    EXPECT_TRUE(logs.contains(QLatin1String("in /Users/[REDACTED]/x and /home/[REDACTED] and "))) << logs.toStdString();
    EXPECT_FALSE(logs.contains(host.home()));
    EXPECT_TRUE(logs.contains(QLatin1String("\nHost: [REDACTED]\n"))) << logs.toStdString();
    EXPECT_FALSE(logs.contains(QLatin1String("LOG TRUNCATED")));
}

TEST_F(LogUploaderTest, TellsHowTheServerAnswered) {
    const struct {
        int status;
        const char *body;
        const char *result;
    } cases[] = {
        {200, "{\"message\":\"Saved as 7\"}", "Saved as 7"},
        {201, "{\"message\":7}", "Logs uploaded successfully"},
        {200, "no JSON", "Logs uploaded successfully"},
        {204, "", "error: Server returned error: 204"},
        {500, "{\"message\":\"Saved\"}", "error: Server returned error: 500"},
    };
    for (const auto &[status, body, result] : cases) {
        answer(status, body);
        EXPECT_EQ(upload(), QString::fromUtf8(result));
    }
}

TEST_F(LogUploaderTest, RefusesAnAddressThatIsNoneOrNotEncrypted) {
    for (const char *address : {"", "no address", "http://example.com/logs", "file:///etc/passwd"}) {
        host.settings.setValue(Settings::logUploadURL, QString::fromUtf8(address));
        EXPECT_EQ(upload(), QStringLiteral("error: Invalid server URL configured")) << address;
        EXPECT_EQ(LogUploader::unavailableReason(host.settings).isEmpty(), *address != '\0') << address;
    }
}

TEST_F(LogUploaderTest, HasNothingToSendWhereNoLogIs) {
    answer(200);
    const QString file = host.put(QStringLiteral("/in-the-way"));
    AppLogger nowhere(file + QStringLiteral("/logs"));
    LogUploader empty(host.host(), nowhere);
    EXPECT_THROW(await(empty.uploadLogs()), LogUploadError);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(LogUploaderTexts, KeepTheLatestLogFromASessionOrALineOn) {
    const struct {
        const char *name;
        QByteArray text;
        qsizetype maxSize;
        QByteArray expected;
    } cases[] = {
        {"at the limit", "abc\ndef\n", 8, "abc\ndef\n"},
        {"no banner in the tail", "abc\ndef\nghi\n", 7, "ghi\n"},
        {"a cut just before a line", "abc\ndef\n", 5, "def\n"},
        {"one long line", QByteArray(600, 'a') + QByteArray(500, 'b'), 500, QByteArray(500, 'b')},
        {"a banner in the tail", "old\n" + QByteArray(300, 'x') + "\n\n" + rule + "\nStarted\n" + rule + "\nnew\n", 200,
         rule + "\nStarted\n" + rule + "\nnew\n"},
        {"the cut right at the banner", "old\n" + rule + "\nnew\n", 65, rule + "\nnew\n"},
        {"the cut through the banner", QByteArray(100, 'x') + '\n' + rule + "\nnew\n", 60, "new\n"},
        {"the cut through a character", "a€€", 5, "€"},
    };
    for (const auto &[name, text, maxSize, expected] : cases)
        EXPECT_EQ(LogUploader::truncateToLatestLogs(text, maxSize), expected) << name;
}

TEST(LogUploaderTexts, MarkALogThatWasCut) {
    const LogUploader::Identity nobody{QStringLiteral("/home/ann"), QStringLiteral("box"), {}};
    const QString mark = QStringLiteral("[LOG TRUNCATED - Showing latest ~500KB of logs]\n\n");
    EXPECT_EQ(LogUploader::preparedLogs(QString(512'000, QLatin1Char('a')), nobody).size(), 512'000);
    EXPECT_EQ(LogUploader::preparedLogs(QString(512'001, QLatin1Char('a')), nobody),
              mark + QString(512'000, QLatin1Char('a')));
}

TEST(LogUploaderTexts, LoseTheUsersFoldersHoweverAPathSpellsThem) {
    const QStringList names{QStringLiteral("ann"), QStringLiteral("Jörg M"), QStringLiteral("root"), QString()};
    const struct {
        const char *text;
        const char *expected;
    } cases[] = {
        {"/run/media/ann/DISK/eXo", "/run/media/[REDACTED]/DISK/eXo"},
        {"\"/media/ann\", (/media/ann) /media/ann.", "\"/media/[REDACTED]\", (/media/[REDACTED]) /media/[REDACTED]."},
        {"Z:\\data\\Ann\\x ~ann/x", "Z:\\data\\[REDACTED]\\x ~[REDACTED]/x"},
        {"/mnt/J\u00f6rg M/a /mnt/Jo\u0308rg M/a", "/mnt/[REDACTED]/a /mnt/[REDACTED]/a"},
        {"file:///mnt/J%C3%B6rg%20M/a /mnt/J\u00f6rg\\ M/a", "file:///mnt/[REDACTED]/a /mnt/[REDACTED]/a"},
        {"/games/annals /x/Anna ann /root/ann2 /ann-b", "/games/annals /x/Anna ann /root/ann2 /ann-b"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(LogUploader::anonymizeLogs(QString::fromUtf8(text), {QStringLiteral("/x"), {}, names}),
                  QString::fromUtf8(expected));
}

TEST_F(LogUploaderTest, LosesTheLoginNameAlsoWithAHomeOfAnotherName) {
    answer(200);
    const MachineInfo machine = MachineInfo::current();
    logger.log(LogLevel::Info, QStringLiteral("on /run/media/%1/DISK").arg(machine.userName),
               std::source_location::current());
    upload();
    const QString logs = sent()[QLatin1String("logs")].toString();
    // "root" is nobody's name.
    EXPECT_EQ(logs.contains(QLatin1String("/run/media/[REDACTED]/DISK")), machine.userName != QLatin1String("root"));
}

TEST(LogUploaderTexts, LoseTheNamesOfUserAndMachine) {
    const struct {
        const char *home;
        const char *text;
        const char *expected;
    } cases[] = {
        {"/Users/ann", "/Users/ann/a /Users/ann", "/Users/[REDACTED]/a /Users/[REDACTED]"},
        {"/Users/ann", "/Users/annie/x", "/Users/[REDACTED]ie/x"},
        {"/home/ann", "/home/ann/a /Users/ann /home/bob", "/home/[REDACTED]/a /Users/[REDACTED] /home/bob"},
        {"/srv/people/ann", "/srv/people/ann/.config", "/srv/people/[REDACTED]/.config"},
        {"/root", "/root/x /home/root /rootfs", "/root/x /home/[REDACTED] /rootfs"},
        {"", "/home/ann /Users/", "/home/ann /Users/"},
        {"/home/ann", "Host: box\nHost: boxer box", "Host: [REDACTED]\nHost: [REDACTED]er box"},
    };
    for (const auto &[home, text, expected] : cases)
        EXPECT_EQ(
            LogUploader::anonymizeLogs(QString::fromUtf8(text), {QString::fromUtf8(home), QStringLiteral("box"), {}}),
            QString::fromUtf8(expected));
}
