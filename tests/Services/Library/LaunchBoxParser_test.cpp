#include "Services/Library/LaunchBoxParser.h"

#include "Host/AppLogger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ludarium {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

class LaunchBoxParsing : public testing::Test {
  protected:
    LaunchBoxParsing() : m_logger(m_logs.path()) { AppLogger::setShared(&m_logger); }
    ~LaunchBoxParsing() override { AppLogger::setShared(nullptr); }

    void put(const char *name, const QByteArray &content) {
        const QString path = m_collection.filePath(QString::fromUtf8(name));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    void putGames(const char *name, const QByteArray &body) {
        put(name, "<?xml version=\"1.0\"?><LaunchBox>" + body + "</LaunchBox>");
    }

    LaunchBoxParser::Games parse() {
        m_progress.clear();
        return LaunchBoxParser().parseGamesWithAdditionalApps(
            m_collection.path(), [this](const QString &text) { m_progress.push_back(text.toStdString()); });
    }
    /// "id=title" of each game.
    std::vector<std::string> games() {
        std::vector<std::string> texts;
        for (const GamePtr &game : parse().games)
            texts.push_back((game->id + QLatin1Char('=') + game->title).toStdString());
        return texts;
    }
    std::vector<std::string> platforms() {
        std::vector<std::string> names;
        for (const Platform &platform : LaunchBoxParser().parsePlatforms(m_collection.path()))
            names.push_back((platform.name + QLatin1Char('/') + platform.category).toStdString());
        return names;
    }
    QList<Playlist> playlists() { return LaunchBoxParser().parsePlaylists(m_collection.path()); }
    std::string log() { return m_logger.text().toStdString(); }

    QTemporaryDir m_collection;
    std::vector<std::string> m_progress;

  private:
    QTemporaryDir m_logs;
    AppLogger m_logger;
};

QByteArray game(const char *id, const char *title, const char *more = "") {
    return QByteArray("<Game><ID>") + id + "</ID><Title>" + title + "</Title>" + more + "</Game>";
}

TEST_F(LaunchBoxParsing, ReadsBothLocationsAndKeepsTheFirstOfEachId) {
    putGames("Data/Platforms/MS-DOS.xml", game("1", "One") + game("2", "Two") + game("1", "Again"));
    putGames("xml/all/MS-DOS.xml", game("2", "Lite Two") + game("3", "Lite Three"));
    EXPECT_THAT(games(), ElementsAre("1=One", "2=Two", "3=Lite Three"));
    EXPECT_THAT(m_progress, ElementsAre("Parsing MS-DOS.xml... (1/1)", "Parsing MS-DOS.xml... (1/1)"));
    EXPECT_THAT(log(), HasSubstr("✅ Found lite collection XML location: xml/all/"));
    EXPECT_THAT(log(), HasSubstr("Found 2 XML files to parse from 2 location(s)"));
    EXPECT_THAT(log(), HasSubstr("Parsing file 1/1: MS-DOS.xml"));
    EXPECT_THAT(log(), HasSubstr("  ✓ Loaded 3 games from MS-DOS.xml"));
    EXPECT_THAT(log(), HasSubstr("🔄 Deduplicated 2 duplicate games (from 5 to 3)"));
}

TEST_F(LaunchBoxParsing, RemovesHiddenGamesBeforeRepeatedOnes) {
    putGames("Data/Platforms/A.xml", game("1", "Hidden", "<Hide>True</Hide>") +
                                         game("2", "Shown", "<Hide>false</Hide>") + game("3", "Odd", "<Hide>1</Hide>"));
    putGames("xml/all/A.xml", game("1", "Visible"));
    EXPECT_THAT(games(), ElementsAre("2=Shown", "3=Odd", "1=Visible"));
    EXPECT_THAT(log(), Not(HasSubstr("Deduplicated")));
}

TEST_F(LaunchBoxParsing, TakesXmlFilesOfAnyCaseButNotWindows9x) {
    putGames("Data/Platforms/A.XML", game("1", "One"));
    putGames("Data/Platforms/Windows 9x.xml", game("2", "Two"));
    putGames("xml/all/Windows 9x.XML", game("3", "Three"));
    putGames("Data/Platforms/B.xml.bak", game("4", "Four"));
    putGames("Data/Platforms/._A.xml", "\x01");
    EXPECT_THAT(games(), ElementsAre("1=One"));
    EXPECT_THAT(platforms(), ElementsAre("A/Computer"));
}

TEST_F(LaunchBoxParsing, RecoversGamesOfABrokenFileWithoutItsApplications) {
    put("Data/Platforms/MS-DOS.xml", "<LaunchBox>" + game("1", "One") +
                                         "<AdditionalApplication><Id>a</Id></AdditionalApplication><Broken" +
                                         game("2", "Two") + "</LaunchBox>");
    EXPECT_THAT(games(), ElementsAre("1=One", "2=Two"));
    EXPECT_THAT(parse().additionalApplications, IsEmpty());
    EXPECT_THAT(log(), HasSubstr("    ⚠️ Standard decode failed, trying manual parsing..."));
}

TEST_F(LaunchBoxParsing, ReadsAFileWithADocumentTypeOnlyByRecovery) {
    put("Data/Platforms/A.xml",
        "<!DOCTYPE L [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><L>" + game("1", "&e;") + game("2", "Plain") + "</L>");
    EXPECT_THAT(games(), ElementsAre("2=Plain"));
}

TEST_F(LaunchBoxParsing, ReadsAListWithAnUndecodableRecordAsEmptyWithoutAWord) {
    const QByteArray application = "<AdditionalApplication><Id>a</Id><GameID>1</GameID></AdditionalApplication>";
    putGames("Data/Platforms/A.xml", game("1", "One") + game("2", "<b>Two</b>") + application);
    putGames("xml/all/B.xml", game("3", "Three"));
    const LaunchBoxParser::Games found = parse();
    ASSERT_EQ(found.games.size(), 1);
    EXPECT_EQ(found.games[0]->id, QStringLiteral("3"));
    ASSERT_EQ(found.additionalApplications.size(), 1);
    EXPECT_EQ(found.additionalApplications[0].gameId, QStringLiteral("1"));
    EXPECT_THAT(log(), Not(HasSubstr("⚠️")));
    EXPECT_THAT(log(), HasSubstr("  ✓ Loaded 0 games from A.xml"));
}

TEST_F(LaunchBoxParsing, PassesOverAFileThatCannotBeRead) {
    QDir(m_collection.path()).mkpath(QStringLiteral("Data/Platforms/Folder.xml"));
    putGames("Data/Platforms/A.xml", game("1", "One"));
    EXPECT_THAT(games(), ElementsAre("1=One"));
    EXPECT_THAT(log(), HasSubstr("Warning: Could not parse Folder.xml: Is a directory"));
}

TEST_F(LaunchBoxParsing, LooksElsewhereOnlyWhenThereIsNoGameAtAll) {
    putGames("LaunchBox.xml", game("1", "Root"));
    putGames("Data/Games.XML", game("2", "Data") + game("1", "Repeated"));
    putGames("Data/Broken.xml", "</nonsense>");
    EXPECT_EQ(parse().games.first()->title, QStringLiteral("Root"));
    EXPECT_THAT(games(), UnorderedElementsAre("1=Root", "2=Data"));
    EXPECT_THAT(m_progress, ElementsAre("Trying alternate locations..."));

    putGames("Data/Platforms/A.xml", game("3", "Usual"));
    EXPECT_THAT(games(), ElementsAre("3=Usual"));
}

TEST_F(LaunchBoxParsing, FillsEveryFieldOfAGameAsCollectionsWriteIt) {
    putGames(
        "Data/Platforms/A.xml",
        "<Game><VideoUrl>v</VideoUrl><ReleaseDate>1995-01-13T03:00:00-05:00</ReleaseDate><Series />"
        "<DateAdded>2021-04-21T08:02:32.2482401-05:00</DateAdded><CommunityStarRating>3.890499</CommunityStarRating>"
        "<Notes>\n Tom &amp; Jerry \n</Notes><ID>1</ID><Unknown><ID>2</ID></Unknown></Game>");
    const GamePtr found = parse().games.value(0);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->videoURL, QStringLiteral("v"));
    EXPECT_EQ(found->releaseDate, QDateTime(QDate(1995, 1, 13), QTime(3, 0), Qt::UTC));
    EXPECT_EQ(found->releaseYear, 1995);
    EXPECT_EQ(found->dateAdded, QDateTime(QDate(2021, 4, 21), QTime(8, 2, 32), Qt::UTC));
    EXPECT_EQ(found->notes, "Tom & Jerry");
    EXPECT_FALSE(found->series.isNull());
    EXPECT_EQ(found->starRating(), 4);
}

TEST_F(LaunchBoxParsing, KeepsLongAndOddTitlesWhole) {
    const QByteArray longTitle(300, 'x');
    putGames("Data/Platforms/A.xml", game("1", longTitle.constData()) + game("2", "a&#9;b&#10;c/../d"));
    EXPECT_THAT(games(), ElementsAre("1=" + longTitle.toStdString(), "2=a\tb\nc/../d"));
}

TEST_F(LaunchBoxParsing, AddsPlatformsOfFilesThatTheListDoesNotName) {
    EXPECT_THAT(platforms(), IsEmpty());
    putGames("xml/all/Sega Genesis.xml", "");
    EXPECT_THAT(platforms(), ElementsAre("Sega Genesis/Computer"));
    EXPECT_THAT(log(), HasSubstr("   Auto-detected new platform: Sega Genesis"));

    put("xml/Platforms.xml", "<L><Platform><Name>Lite</Name><Category>C</Category></Platform></L>");
    EXPECT_THAT(platforms(), ElementsAre("Lite/C", "Sega Genesis/Computer"));

    put("Data/Platforms.xml", "<L><Platform><Name>Windows 9x</Name></Platform><Folder><Name>x</Name></Folder><Platform>"
                              "<Name>Sega Genesis</Name><Category>Console</Category></Platform></L>");
    putGames("Data/Platforms/Windows 9x.xml", "");
    EXPECT_THAT(platforms(), ElementsAre("Sega Genesis/Console"));
    EXPECT_THAT(log(), HasSubstr("   Loaded 2 platforms from Platforms.xml"));
}

TEST_F(LaunchBoxParsing, GoesOnWithDetectionWhenThePlatformListIsBad) {
    putGames("Data/Platforms/A.xml", "");
    for (const char *bad : {"<L><Platform><Name>B</Name></Platform>", "<L></L>", "",
                            "<L><Platform><Name>B</Name></Platform><Platform><Name><x/></Name></Platform></L>"}) {
        put("Data/Platforms.xml", bad);
        EXPECT_THAT(platforms(), ElementsAre("A/Computer")) << bad;
    }
    EXPECT_THAT(log(), HasSubstr("Warning: Could not parse Platforms.xml: "));
}

TEST_F(LaunchBoxParsing, GivesTheLinksAndFiltersOfAFileToItsFirstPlaylist) {
    QByteArray links;
    for (int i = 0; i < 10; ++i)
        links +=
            "<PlaylistGame><GameId>" + QByteArray::number(i) + "</GameId><PlaylistId>other</PlaylistId></PlaylistGame>";
    put("Data/Playlists/two.xml", "<L><Playlist><PlaylistId>p</PlaylistId><Name>zeta</Name><PlaylistFilter><Value>own</"
                                  "Value></PlaylistFilter></Playlist>" +
                                      links +
                                      "<Playlist><Name>Beta</Name><GameId>kept</GameId></"
                                      "Playlist><PlaylistFilter><Value>v</Value><FieldKey>Genre</FieldKey>"
                                      "<ComparisonTypeKey>Contains</ComparisonTypeKey></PlaylistFilter></L>");
    put("Data/Playlists/dynamic.xml",
        "<L><Playlist><PlaylistId>d</PlaylistId><Name>alpha</Name><AutoPopulate>true</AutoPopulate>"
        "</Playlist><PlaylistGame><GameId>9</GameId></PlaylistGame></L>");
    put("Data/Playlists/broken.xml", "<L><Playlist></L>");

    const QList<Playlist> found = playlists();
    ASSERT_EQ(found.size(), 3);
    EXPECT_EQ(found[0].name, QStringLiteral("Beta"));
    EXPECT_EQ(found[1].name, QStringLiteral("alpha"));
    EXPECT_EQ(found[2].name, QStringLiteral("zeta"));
    EXPECT_EQ(found[0].gameIds, QStringList(QStringLiteral("kept")));
    EXPECT_THAT(found[1].gameIds, IsEmpty());
    EXPECT_EQ(found[2].gameIds.join(QLatin1Char(',')), QStringLiteral("0,1,2,3,4,5,6,7,8,9"));
    for (const Playlist &playlist : {found[0], found[2]}) {
        ASSERT_EQ(playlist.filters.size(), 1);
        EXPECT_EQ(playlist.filters[0].value, QStringLiteral("v"));
        EXPECT_EQ(playlist.filters[0].comparisonType, QStringLiteral("Contains"));
    }
    EXPECT_THAT(log(), HasSubstr("📋 Found 3 playlist XML files"));
    EXPECT_THAT(log(), HasSubstr("Warning: Could not parse playlist broken.xml: line 1: "));
    EXPECT_THAT(log(), HasSubstr("   ⚠️ No PlaylistFilter entries found in XML"));
    EXPECT_THAT(log(), HasSubstr("⚠️ PlaylistGame with empty playlistId! Available keys: GameId"));
    EXPECT_THAT(log(), HasSubstr("     - Skipping static gameIds (will be filtered later)"));
    EXPECT_THAT(log(), Not(HasSubstr("dictionary is EMPTY!")));
}

TEST_F(LaunchBoxParsing, HasNoPlaylistsWithoutTheirFolder) {
    EXPECT_THAT(playlists(), IsEmpty());
    put("Data/Playlists/a.xml", "<L><PlaylistGame><GameId>1</GameId></PlaylistGame></L>");
    EXPECT_THAT(playlists(), IsEmpty());
    EXPECT_THAT(log(), HasSubstr("   ⚠️ No playlists found in XML"));
    EXPECT_THAT(log(), HasSubstr("⚠️ playlistGames dictionary is EMPTY!"));
}

TEST_F(LaunchBoxParsing, ThrowsForAFolderThatCannotBeListed) {
    // A file in the folder's place cannot be listed by anybody, root included.
    put("Data/Platforms", "");
    put("Data/Playlists", "");
    EXPECT_THROW(parse(), ParseError);
    EXPECT_THROW(platforms(), ParseError);
    try {
        playlists();
        ADD_FAILURE() << "listed a file";
    } catch (const ParseError &error) {
        EXPECT_THAT(error.what(), HasSubstr("Data/Playlists: Not a directory"));
    }
}

} // namespace
} // namespace ludarium
