#include "demo/DemoCollection.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The games of the demo collection in a real DOSBox: each plays by itself, writes its score and ends.

namespace ludarium {

namespace {

struct SelfPlay {
    const char *name;
    const char *folder;   ///< in eXo/eXoDOS
    const char *commands; ///< on C:, which is eXo/eXoDOS, one a line
    const char *scoreFile;
    int leastScore;
};

const SelfPlay selfPlays[] = {
    {"MarshSerpentEga", "serpent", "cd EGA\nSERPENT.COM /T", "EGA/SCORE.DAT", 100},
    {"MarshSerpentVga", "serpent", "cd VGA\nSERPENT.COM /T", "VGA/SCORE.DAT", 100},
    {"CometCourier", "courier", "COURIER.COM /T", "SCORE.DAT", 100},
    {"CometCourierTwo", "courier2", "COURIER2.COM /T", "SCORE.DAT", 100},
    {"OrchardBreaker", "orchard", "ORCHARD.COM /T", "SCORE.DAT", 50},
    {"Lanternlight", "lantern", "LANTERN.COM /T", "SCORE.DAT", 50},
    {"KeeperOfGullRock", "keeper", "KEEPER.COM /T", "SCORE.DAT", 106}, // the whole walkthrough
    {"KeeperFromDisc", "keepercd", "imgmount d cd\\KEEPERCD.ISO -t iso\nd:\nKEEPER.COM /T", "SCORE.DAT", 106}};

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int scoreIn(const QString &path) {
    static const QRegularExpression line(QStringLiteral("^SCORE (\\d{5}) LEVEL (\\d\\d)\r\n$"));
    const QRegularExpressionMatch match = line.match(QString::fromLatin1(contentOf(path)));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

class DemoScripts : public testing::Test {
  protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("dosbox")).isEmpty())
            GTEST_SKIP() << "dosbox is not installed";
        collection = folder.filePath(QStringLiteral("Demo"));
        writeDemoCollection(collection);
    }

    void runDosbox(const QString &configuration, const QString &workingDirectory) {
        QProcess dosbox;
        dosbox.setWorkingDirectory(workingDirectory);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), folder.path());
        dosbox.setProcessEnvironment(environment);
        dosbox.start(QStringLiteral("dosbox"), {QStringLiteral("-conf"), configuration, QStringLiteral("-noconsole")});
        ASSERT_TRUE(dosbox.waitForFinished(90000)) << "DOSBox did not end";
    }

    QTemporaryDir folder;
    QString collection;
};

class DemoGames : public DemoScripts, public testing::WithParamInterface<SelfPlay> {};

} // namespace

TEST_P(DemoGames, PlayThemselvesAndWriteTheirScore) {
    const SelfPlay &play = GetParam();
    const QString set = collection + QStringLiteral("/eXo/eXoDOS");
    const QString game = set + u'/' + QString::fromLatin1(play.folder);
    QFile configuration(folder.filePath(QStringLiteral("self.conf")));
    ASSERT_TRUE(configuration.open(QIODevice::WriteOnly));
    configuration.write(
        "[cpu]\ncycles=fixed 20000\n[mixer]\nnosound=true\n[autoexec]\nmount c \"" + set.toUtf8() + "\"\nc:\ncd " +
        play.folder + "\n" +
        QByteArray(play.commands).replace("cd\\KEEPERCD", (game + QStringLiteral("/cd/KEEPERCD")).toUtf8()) +
        "\nexit\n");
    configuration.close();
    runDosbox(configuration.fileName(), game);
    EXPECT_GE(scoreIn(game + u'/' + QString::fromLatin1(play.scoreFile)), play.leastScore);
}

INSTANTIATE_TEST_SUITE_P(, DemoGames, testing::ValuesIn(selfPlays),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(DemoScripts, StartTheSelfRunningDemoFromTheFolderOfTheSets) {
    const QString eXo = collection + QStringLiteral("/eXo");
    runDosbox(eXo + QStringLiteral("/eXoDOS/!dos/cc2demo/dosbox_linux.conf"), eXo);
    EXPECT_GT(scoreIn(eXo + QStringLiteral("/eXoDOS/cc2demo/SCORE.DAT")), 0);
}

} // namespace ludarium
