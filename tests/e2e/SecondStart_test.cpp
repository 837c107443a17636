#include "Host/HostPaths.h"
#include "Services/Library/CacheFiles.h"
#include "e2e/CliRun.h"
#include "support/CollectionGenerator.h"

#include <QFile>
#include <QJsonArray>
#include <gtest/gtest.h>

// What a start from the cache tells of a collection, beside what the first start told, which read its files.
namespace ludarium {
namespace {

using namespace Qt::StringLiterals;
using test::CliResult;
using test::CliRun;

/// A way of making a collection in an empty folder.
struct Collection {
    const char *name;
    void (*make)(const QString &folder);
};

void put(const QString &path, const QByteArray &content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

void makeDemo(const QString &folder) {
    const CliRun cli;
    ASSERT_EQ(cli.run({u"demo"_s, folder}).status, 0);
}

/// Every field that a game can have, and games that can be downloaded.
void makeLite(const QString &folder) {
    put(folder + u"/xml/all/MS-DOS.xml"_s,
        "<LaunchBox><Game><ID>full</ID><Title>Full</Title><Platform>MS-DOS</Platform>"
        "<ReleaseDate>1995-01-13T03:00:00-05:00</ReleaseDate><MaxPlayers>4</MaxPlayers>"
        "<Cooperative>true</Cooperative><Rating>E</Rating><CommunityStarRating>4.35</CommunityStarRating>"
        "<CommunityStarRatingTotalVotes>77</CommunityStarRatingTotalVotes><Completed>false</Completed>"
        "<Broken>true</Broken><Portable>false</Portable><Hide>false</Hide><Developer></Developer>"
        "<DateAdded>2021-04-21T08:02:32.2482401-05:00</DateAdded>"
        "<ConfigurationPath>eXo\\eXoDOS\\!dos\\full\\dosbox.conf</ConfigurationPath></Game>"
        "<Game><ID>here</ID><Title>Here</Title><Platform>MS-DOS</Platform>"
        "<ConfigurationPath>eXo\\eXoDOS\\!dos\\here\\dosbox.conf</ConfigurationPath></Game>"
        "<Game><Title>No id</Title><Platform>Lost</Platform></Game>"
        "<AdditionalApplication><Id>x</Id><GameID>full</GameID><Name>Manual</Name>"
        "<ApplicationPath>Manuals\\full.pdf</ApplicationPath><CommandLine>-x</CommandLine><Priority>2</Priority>"
        "<PlayCount>3</PlayCount><SideA>true</SideA><AutoRunAfter>true</AutoRunAfter></AdditionalApplication>"
        "</LaunchBox>");
    put(folder + u"/eXo/eXoDOS/here/HERE.EXE"_s, "MZ");
    put(folder + u"/eXo/util/aria/eXoDOS_index.txt"_s, "1:2MB (2,000,000):eXo/eXoDOS/Full (1995).zip\n");
    put(folder + u"/eXo/util/aria/eXoDOS.torrent"_s, {});
}

void makeBig(const QString &folder) {
    CollectionGenerator::Shape shape;
    shape.games = 1'500;
    CollectionGenerator(shape).write(folder);
}

class SecondStart : public testing::TestWithParam<Collection> {
  protected:
    QTemporaryDir m_folder;
    QString collection() const { return m_folder.filePath(u"collection"_s); }
    void SetUp() override { GetParam().make(collection()); }
};

} // namespace

TEST_P(SecondStart, TellsWhatTheFirstOneTold) {
    const QList<QStringList> commands{{u"games"_s},       {u"search"_s, u"--sort"_s, u"rating"_s},
                                      {u"platforms"_s},   {u"playlists"_s},
                                      {u"collections"_s}, {u"status"_s}};
    QStringList ids;
    const auto compare = [&](const QStringList &command) {
        const CliRun cli;
        const QStringList arguments = QStringList{u"--collection"_s, collection(), u"--json"_s} + command;
        const QString cache = CacheFiles(HostPaths::native(cli.home())).cache();
        ASSERT_FALSE(QFile::exists(cache));
        const CliResult first = cli.run(arguments);
        ASSERT_EQ(first.status, 0) << first.errors.toStdString();
        ASSERT_TRUE(QFile::exists(cache));
        for (const char *which : {"second", "third"}) {
            const CliResult later = cli.run(arguments);
            EXPECT_TRUE(later.output == first.output) << which << ' ' << command.join(u' ').toStdString();
        }
        if (ids.isEmpty())
            ids = test::members(test::json(first).value(u"games"_s).toArray(), "ID");
    };
    for (const QStringList &command : commands)
        compare(command);
    ASSERT_FALSE(ids.isEmpty());
    for (qsizetype i = 0; i < ids.size(); i += 1 + ids.size() / 4)
        compare({u"show"_s, ids[i]});
}

INSTANTIATE_TEST_SUITE_P(Collections, SecondStart,
                         testing::Values(Collection{"demo", makeDemo}, Collection{"lite", makeLite},
                                         Collection{"generated", makeBig}),
                         [](const auto &info) { return info.param.name; });

TEST(SecondStartOfALiteCollection, StillOffersItsDownloadsAndSurvivesACommandOnAnother) {
    QTemporaryDir folder;
    const QString lite = folder.filePath(u"lite"_s);
    makeLite(lite);
    const CliRun cli;
    const auto shows = [&] {
        const QByteArray shown = cli.run({u"--collection"_s, lite, u"show"_s, u"full"_s}).output;
        const QByteArray platforms = cli.run({u"--collection"_s, lite, u"platforms"_s}).output;
        return shown.contains("downloadable (2 MB)") && shown.contains("4.35 (77 votes)") && shown.contains("Manual") &&
               platforms.contains("MS-DOS");
    };
    EXPECT_TRUE(shows());
    EXPECT_TRUE(shows());
    const test::TinyCollection other;
    EXPECT_EQ(cli.run({u"--collection"_s, other.path(), u"games"_s}).status, 0);
    const CliResult load = cli.run({u"--collection"_s, lite, u"load"_s});
    EXPECT_TRUE(load.output.contains("From cache:  yes")) << load.output.toStdString();
    EXPECT_TRUE(shows());
}

} // namespace ludarium
