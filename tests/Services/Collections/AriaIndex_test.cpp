#include "Services/Collections/AriaIndexManager.h"

#include "support/TestHost.h"

#include <QFile>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

AriaIndex indexOf(const QStringList &names) {
    QString text;
    int number = 0;
    for (const QString &name : names)
        text += u"%1:1.0MiB (1,048,576):./eXo/eXoDOS/%2.zip\n"_s.arg(++number).arg(name);
    AriaIndex index;
    index.parseIndex(text, CollectionType::eXoDOS);
    return index;
}

std::string match(const AriaIndex &index, const char *title, bool fastOnly = false) {
    const IndexEntry *entry = index.getDownloadInfoByTitle(QString::fromUtf8(title), fastOnly);
    return entry == nullptr ? "" : entry->gameName.toStdString();
}

} // namespace

TEST(AriaIndex, NamesTheFilesOfEachCollection) {
    QStringList rows;
    for (const CollectionTypeInfo &row : CollectionTypeInfo::all())
        rows.append(QStringList{row.rawValue, row.torrentFilename, row.gameDataPathComponent, row.eXoPathComponent,
                                row.indexFilename()}
                        .join(u' '));
    EXPECT_EQ(rows.size(), 7);
    EXPECT_EQ(rows[2], u"eXoWin3x eXoWin3x.torrent GameData/eXoWin3x eXo/eXoWin3x eXoWin3x_index.txt"_s);
    EXPECT_EQ(rows[6],
              u"eXoDemoScene eXoDemoScene.torrent GameData/eXoDemoScene eXo/eXoDemoScn eXoDemoScene_index.txt"_s);
    for (const CollectionTypeInfo &row : CollectionTypeInfo::all())
        EXPECT_EQ(&CollectionTypeInfo::of(row.type), &row);
}

TEST(AriaIndex, ReadsTheTableOfAria2c) {
    // As aria2c 1.36 prints it.
    const QString output = u"*** BitTorrent File Information ***\n"
                           "Mode: multi\n"
                           "Files:\n"
                           "idx|path/length\n"
                           "===+===========================================================================\n"
                           "  1|./Top/eXo/eXoDOS/Abuse (1995).zip\n"
                           "   |488KiB (500,000)\n"
                           "---+---------------------------------------------------------------------------\n"
                           "  2|./Top/a|b: c.zip\n"
                           "\n"
                           "   |no size\n"
                           "---+---------------------------------------------------------------------------\n"
                           "   |0B (0)\n"
                           "   |1MiB (1,048,576)\n"
                           "  3|./replaced.zip\n"
                           "  4|./Top/last.zip\n"
                           "   |12MB\n"_s;
    EXPECT_EQ(AriaIndex::parseAria2cOutput(output), u"1:488KiB (500,000):./Top/eXo/eXoDOS/Abuse (1995).zip\n"
                                                    "2:0B (0):./Top/a|b: c.zip\n"
                                                    "4:12MB:./Top/last.zip"_s);
    EXPECT_EQ(AriaIndex::parseAria2cOutput(u"   |1MiB\n1x|a.zip\n   |1MiB\n5|b.zip\n   |KB"_s), QString());
}

TEST(AriaIndex, ReadsSizes) {
    const std::pair<const char *, qint64> rows[]{{"1.2GiB (1,234,567,890)", 1'234'567'890},
                                                 {"700MiB", 734'003'200},
                                                 {"1.5 GB", 1'610'612'736},
                                                 {"2KiB", 2048},
                                                 {"0.5kb", 512},
                                                 {"17", 17},
                                                 {"17B", 17},
                                                 {"(12)", 12},
                                                 {"3MiB (many)", 0},
                                                 {"3MiB )5(", 0},
                                                 {"1.2.3MiB", 0},
                                                 {"", 0},
                                                 {"nan", 0},
                                                 {"-5MiB", 0},
                                                 {"1B (-7)", 0},
                                                 {"1B (99999999999999999999)", 0},
                                                 {"99999999999999999999GiB", std::numeric_limits<qint64>::max()}};
    for (const auto &[text, bytes] : rows)
        EXPECT_EQ(AriaIndex::parseSize(QString::fromUtf8(text)), bytes) << text;
}

TEST(AriaIndex, WritesSizesAsFileManagersDo) {
    const std::pair<qint64, const char *> rows[]{{0, "Zero KB"},
                                                 {1, "1 KB"},
                                                 {499'600, "500 KB"},
                                                 {999'499, "999 KB"},
                                                 {999'500, "1 MB"},
                                                 {734'003'200, "734 MB"},
                                                 {1'250'000, "1.3 MB"},
                                                 {999'960'000, "1 GB"},
                                                 {1'234'567'890, "1.23 GB"},
                                                 {5'000'000'000'000, "5000 GB"}};
    for (const auto &[bytes, text] : rows)
        EXPECT_EQ(formattedFileSize(bytes).toStdString(), text);
}

TEST(AriaIndex, KeepsAColonInAPath) {
    AriaIndex index;
    index.parseIndex(u"12:1.0MiB (1,048,576):./eXo/eXoDOS/b: c.zip"_s, CollectionType::eXoDOS);
    ASSERT_EQ(index.entries().size(), 1);
    EXPECT_EQ(index.entries()[0], (IndexEntry{12, u"./eXo/eXoDOS/b: c.zip"_s, u"b: c.zip"_s, u"b: c"_s, 1'048'576,
                                              CollectionType::eXoDOS}));
}

TEST(AriaIndex, PassesOverWhatIsNoGameOfTheCollection) {
    const char *const lines[]{
        "",
        "garbage",
        "1:2MiB",
        "x:2MiB:eXo/eXoDOS/a.zip",
        " 1:2MiB:eXo/eXoDOS/a.zip",
        "99999999999999999999:2MiB:eXo/eXoDOS/a.zip",
        "0:2MiB:eXo/eXoDOS/a.zip",
        "-1:2MiB:eXo/eXoDOS/a.zip",
        "1:2MiB:eXo/eXoDOS/a.ZIP",
        "1:2MiB:eXo/eXoDOS/a.pdf",
        "1:2MiB:eXo/eXoDOS/a.rar",
        "1:2MiB:eXo/eXoDOS/.zip",
        "1:2MiB:",
        "1:2MiB:///",
        "1:2MiB:eXo/eXoDOS/a\x01.zip",
        "1:2MiB:eXo/eXoDOS/..\\a.zip",
        "1:2MiB:eXo/eXoDOS/!DOSmetadata.zip",
        "1:2MiB:LaunchBox.zip",
        "1:2MiB:XODOSMetadata.zip",
        "1:2MiB:eXo/eXoDOS/eXoDOS Catalog v6.zip",
        "1:2MiB:eXo/eXoWin3x/a.zip",
        "1:2MiB:Content/a.zip",
    };
    for (const char *line : lines) {
        AriaIndex index;
        index.parseIndex(QString::fromUtf8(line), CollectionType::eXoDOS);
        EXPECT_TRUE(index.isEmpty()) << line;
        EXPECT_EQ(index.gameDataCount(), 0) << line;
    }
    AriaIndex index;
    index.parseIndex(u"1:bad size:bare.zip\r\n2:1MiB:eXo/eXoDOS/b.7z\n3:1MiB:eXo/eXoDOS/c.zip/"_s,
                     CollectionType::eXoDOS);
    QStringList names;
    for (const IndexEntry &entry : index.entries())
        names.append(entry.filename);
    EXPECT_THAT(names, ElementsAre(u"bare.zip"_s, u"b.7z"_s, u"c.zip"_s));
    EXPECT_EQ(index.entries()[0].sizeBytes, 0);
}

TEST(AriaIndex, NeverTakesACompanionArchiveForAGame) {
    AriaIndex index;
    index.parseIndex(u"1:1MiB:Content/GameData/eXoDOS/Abuse (1995).zip"_s, CollectionType::eXoDOS);
    EXPECT_TRUE(index.isEmpty());
    EXPECT_EQ(index.getDownloadInfo(u"Abuse (1995)"_s), nullptr);
    EXPECT_EQ(match(index, "Abuse (1995)"), "");
    ASSERT_NE(index.getGameData(u"ABUSE (1995)"_s), nullptr);
    EXPECT_EQ(index.getGameData(u"Abuse (1995)"_s)->index, 1);
}

TEST(AriaIndex, LetsALaterEntryOfOneNameCount) {
    AriaIndex index = indexOf({u"Abuse (1995)"_s, u"Doom (1993)"_s});
    index.parseIndex(u"77:2KiB:./eXo/eXoWin3x/ABUSE (1995).7z\n78:1MiB:./eXo/eXoWin3x/doom.zip"_s,
                     CollectionType::eXoWin3x);
    ASSERT_EQ(index.entries().size(), 3);
    EXPECT_EQ(index.getDownloadInfo(u"abuse (1995)"_s)->index, 77);
    EXPECT_EQ(index.getDownloadInfo(u"abuse (1995)"_s)->collectionType, CollectionType::eXoWin3x);
    EXPECT_EQ(index.getDownloadInfoByTitle(u"Abuse"_s, true)->index, 77);
    // Both archives of Doom normalise alike.
    EXPECT_EQ(index.getDownloadInfoByTitle(u"D-o-o-m"_s, true)->index, 78);
    EXPECT_EQ(index.getDownloadInfo(u"Doom (1993)"_s)->index, 2);
}

TEST(AriaIndex, MatchesTitlesByHashInOrder) {
    const AriaIndex index =
        indexOf({u"Doom 2 (1994)"_s, u"Secret of Monkey Island, The (1990)"_s, u"Dungeons and Dragons"_s, u"!"_s});
    const std::pair<const char *, const char *> rows[]{
        {"doom 2 (1994)", "Doom 2 (1994)"},
        {"Doom II", "Doom 2 (1994)"},
        {"The Monkey Island - Secret", "Secret of Monkey Island, The (1990)"},
        {"Dungeons & Dragons", "Dungeons and Dragons"},
        {"Monkey Island", ""},
        {"", ""},
        {"??", ""},
        {"Doom 2 (1994) Extra", ""}};
    for (const auto &[title, name] : rows)
        EXPECT_EQ(match(index, title, true), name) << title;
}

TEST(AriaIndex, WalksTheIndexForWhatComesNear) {
    test::TestHost host;
    const AriaIndex index =
        indexOf({u"Abuse (1995) (Beta)"_s, u"Zak.McKracken"_s, u"Elite Plus"_s, u"Zork I (1980)"_s, u"Nork- (1980)"_s,
                 u"Ultima VI - The False Prophet"_s, u"Judgment Day Colour Deluxe Night"_s,
                 u"Judgment Day Color Night Extra"_s, u"Judgment Day"_s});
    const std::tuple<const char *, const char *, const char *> rows[]{
        {"Abuse (1995)", "Abuse (1995) (Beta)", ""},
        {"Zak", "Zak.McKracken", ""},
        {"Elite Plus for Windows", "Elite Plus", ""},
        // Only a blank of another kind keeps these from being found by their normalised names; the log shows all alike.
        {"Zork 1\t", "Zork I (1980)", "Base title match: 'Zork 1 ' matched 'Zork I (1980)'"},
        {"Nork:\t", "Nork- (1980)", "Normalized base title match: 'Nork: ' matched 'Nork- (1980)'"},
        {"Ultima VI: Gold Edition", "Ultima VI - The False Prophet",
         "Series prefix match: 'Ultima VI: Gold Edition' matched 'Ultima VI - The False Prophet'"},
        {"Night at Judgement Day in Enhanced Colour Mode", "Judgment Day Colour Deluxe Night",
         "Partial word-set match (score: 0.92): "},
        {"Gold Edition", "", ""},
        {"Some Other Words", "", ""}};
    for (const auto &[title, name, log] : rows) {
        EXPECT_EQ(match(index, title), name) << title;
        EXPECT_THAT(host.log().toStdString(), HasSubstr(log));
    }
    for (const auto &[title, name, log] : rows)
        EXPECT_EQ(match(index, title, true), "") << title;
}

TEST(AriaIndex, EndsBeforeTheWordSetsForATitleOfTwoWords) {
    const AriaIndex index = indexOf({u"Island Monkey Gold"_s});
    EXPECT_EQ(match(index, "Monkey Silver Island"), "");
    EXPECT_EQ(match(index, "Gold Monkey Silver"), "");
    EXPECT_EQ(match(index, "Gold Monkey Silver Island"), "Island Monkey Gold");
    EXPECT_EQ(match(indexOf({u"Monkey Island"_s}), "Island of the Big Monkey"), "Monkey Island");
    EXPECT_EQ(match(indexOf({u"Monkey Island Gold"_s}), "Gold Monkey"), "");
}

class AriaIndexFiles : public testing::Test {
  protected:
    QString put(const QString &path, const QByteArray &content = {}) {
        return host.put(u"/collection/"_s + path, content);
    }
    QString collection() const { return host.root() + u"/collection"_s; }
    test::TestHost host;
    AriaIndexManager manager;
};

TEST_F(AriaIndexFiles, DetectsCollectionsByAnyOfTheirPlaces) {
    EXPECT_TRUE(AriaIndexManager::detectCollections(collection()).isEmpty());
    put(u"eXo/util/aria/eXoIF.torrent"_s);
    put(u"eXo/eXoDemoScn/x"_s);
    put(u"Content/GameData/eXoScummVM/x"_s);
    put(u"eXo/eXoDemoScene/x"_s);
    EXPECT_THAT(AriaIndexManager::detectCollections(collection()),
                ElementsAre(CollectionType::eXoScummVM, CollectionType::eXoIF, CollectionType::eXoDemoScene));
}

TEST_F(AriaIndexFiles, PrefersTheNamedIndexToTheOlderOne) {
    put(u"eXo/eXoDOS/x"_s);
    put(u"eXo/util/aria/index.txt"_s, "1:1MiB:old.zip");
    manager.loadIndex(collection());
    EXPECT_TRUE(manager.getDownloadInfo(u"old"_s).has_value());
    put(u"eXo/util/aria/eXoDOS_index.txt"_s, "1:1MiB:new.zip\n2:1MiB:GameData/eXoDOS/new.zip");
    manager.loadIndex(collection());
    EXPECT_FALSE(manager.getDownloadInfo(u"old"_s).has_value());
    EXPECT_EQ(manager.getDownloadInfoByTitle(u"New"_s, true)->sizeFormatted(), u"1 MB"_s);
    EXPECT_TRUE(manager.isLoaded());
    EXPECT_EQ(manager.collectionURL(), collection());
    EXPECT_THAT(host.log().toStdString(), HasSubstr("AriaIndexManager: Total loaded: 1 entries (GameData: 1)"));
}

TEST_F(AriaIndexFiles, GoesOnBehindAnIndexThatCannotBeRead) {
    put(u"eXo/eXoDOS/x"_s);
    put(u"eXo/eXoScummVM/x"_s);
    put(u"eXo/eXoWin3x/x"_s);
    put(u"eXo/util/aria/eXoDOS_index.txt"_s, "1:1MiB:bad\xff.zip");
    put(u"eXo/util/aria/eXoWin3x_index.txt"_s, "1:1MiB:good.zip");
    const QString pipe = collection() + u"/eXo/util/aria/eXoScummVM_index.txt"_s;
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    manager.loadIndex(collection());
    EXPECT_TRUE(manager.getDownloadInfo(u"good"_s).has_value());
    const std::string log = host.log().toStdString();
    EXPECT_THAT(log, HasSubstr("AriaIndexManager: Failed to read " + collection().toStdString() +
                               "/eXo/util/aria/eXoDOS_index.txt: not UTF-8"));
    EXPECT_THAT(log, HasSubstr("eXoScummVM_index.txt: not a regular file"));
}

TEST_F(AriaIndexFiles, ForgetsTheCollectionBefore) {
    put(u"eXo/eXoDOS/x"_s);
    put(u"eXo/util/aria/eXoDOS_index.txt"_s, "1:1MiB:game.zip");
    manager.loadIndex(collection());
    const auto before = manager.index();
    manager.loadIndex(host.scratch());
    EXPECT_FALSE(manager.isLoaded());
    EXPECT_FALSE(manager.getDownloadInfo(u"game"_s).has_value());
    EXPECT_NE(before->getDownloadInfo(u"game"_s), nullptr);
    EXPECT_THAT(host.log().toStdString(), HasSubstr("AriaIndexManager: No index files found"));
}

} // namespace ludarium
