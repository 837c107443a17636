#include "Services/Library/InstallationStatus.h"

#include "GameFactory.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/CollectionScan.h"
#include "Services/Library/DownloadTitles.h"
#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ludarium {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr auto absent = "absent";
constexpr auto installed = "installed";
constexpr auto compressed = "compressed";

std::string text(const GameStatus &status) {
    if (status.isInstalled && !status.isCompressed && !status.isDownloadable)
        return installed;
    if (status.isCompressed && !status.isInstalled && !status.isDownloadable)
        return compressed;
    if (status.isDownloadable && !status.isInstalled && !status.isCompressed)
        return "downloadable " + status.downloadSize.toStdString();
    return status == GameStatus() ? absent : "contradictory";
}

std::string key(const char *utf8) {
    std::string result;
    assignNameKey(result, std::string_view(utf8));
    return result;
}

class StatusTest : public testing::Test {
  protected:
    QString collection() const { return host.root() + u"/collection"_s; }
    void put(const QString &path, const QByteArray &content = {}) { host.put(u"/collection/"_s + path, content); }
    void makeFolder(const QString &path) { QDir().mkpath(collection() + u'/' + path); }

    /// Makes the collection a lite one whose index lists these archives of 2 MB.
    void putIndex(const QStringList &names) {
        QByteArray index;
        for (const QString &name : names)
            index += "1:2MB (2,000,000):eXo/eXoDOS/" + name.toUtf8() + ".zip\n";
        put(u"eXo/util/aria/eXoDOS_index.txt"_s, index);
        put(u"eXo/util/aria/eXoDOS.torrent"_s);
        downloads->loadIndex(collection());
    }

    static GamePtr game(const QString &title, const QString &path, const QString &platform = u"MS-DOS"_s,
                        std::optional<int> year = 1995) {
        return test::makeGame(title, title, platform, [&](Game &changed) {
            changed.configurationPath = path;
            changed.releaseYear = year;
        });
    }

    std::string check(const GamePtr &game) const { return text(status.check({game}, collection()).value(0)); }
    std::string look(const GamePtr &game) const {
        const auto found = status.checkGame(game, collection());
        return found ? text(*found) : "none";
    }

    test::TestHost host;
    std::shared_ptr<AriaIndexManager> downloads = std::make_shared<AriaIndexManager>();
    InstallationStatus status{downloads};
};

struct Family {
    const char *platform;
    const char *folder;
    const char *scripts;
    /// The archives by which a game titled "Big: Foo" of 1995 is found, in `Cfg.conf` of its folder `BigFoo`.
    std::vector<const char *> archives;
};

constexpr const char *never[]{"Big",          "Big Foo (1996) (1995)", "Big: Foo!", "BigFoo (1995) x",
                              "Other (1995)", "application",           "!BigFoo"};

const Family families[]{
    {"MS-DOS",
     "eXo/eXoDOS",
     "!dos",
     {"BigFoo", "Big: Foo", "Big: Foo (1995)", "Big - Foo", "Big - Foo (1995)", "Big Foo", "Big Foo (1995)", "Cfg",
      "Big: Foo (1987)", "Big - Foo (1987)", "Big Foo (1987)"}},
    {"Tandy 1000", "eXo/eXoDOS", "!dos", {"BigFoo"}},
    {"ScummVM",
     "eXo/eXoScummVM",
     "!ScummVM",
     {"BigFoo", "Cfg", "Big: Foo", "Big - Foo", "Big: Foo (1995)", "Big - Foo (1987)"}},
    {"ScummVM SVN", "eXo/eXoScummVM", "!ScummVM", {"BigFoo"}},
    {"Windows 3x",
     "eXo/eXoWin3x",
     "!win3x",
     {"Cfg", "BigFoo", "Big: Foo", "Big: Foo (1995)", "Big - Foo", "Big - Foo (1995)"}},
    {"Windows 3.x", "eXo/eXoWin3x", "!win3x", {"BigFoo"}},
    {"DREAMM",
     "eXo/eXoDREAMM",
     "!DREAMM",
     {"Cfg", "BigFoo", "Big: Foo", "Big: Foo (1995)", "Big - Foo", "Big - Foo (1995)"}},
    {"The Dreamm Set", "eXo/eXoDREAMM", "!DREAMM", {"BigFoo"}},
    {"Interactive Fiction", "eXo/eXoIF", "!if", {"BigFoo", "Big: Foo", "Big - Foo", "Big - Foo (1987)"}},
    {"DemoScene", "eXo/eXoDemoScn", "!dos", {"BigFoo", "Big: Foo", "Big - Foo", "Big: Foo (1987)"}},
    {"Demo Scene", "eXo/eXoDemoScn", "!dos", {"BigFoo"}},
    {"Apple IIGS",
     "eXo/eXoAppleIIGS",
     "!appleiigs",
     {"BigFoo", "Big: Foo", "Big: Foo (1995)", "Big - Foo", "Big - Foo (1995)"}},
};

class StatusOfFamily : public StatusTest, public testing::WithParamInterface<Family> {
  protected:
    GamePtr bigFoo() const {
        return game(
            u"Big: Foo"_s,
            u"eXo\\%1\\%2\\BigFoo\\Cfg.conf"_s.arg(folder().section(u'/', 1), QString::fromUtf8(GetParam().scripts)),
            QString::fromUtf8(GetParam().platform));
    }
    QString folder() const { return QString::fromUtf8(GetParam().folder); }
};

} // namespace

TEST_P(StatusOfFamily, IsInstalledByItsFolder) {
    EXPECT_EQ(check(bigFoo()), absent);
    put(folder() + u"/bigFOO.zip"_s);
    EXPECT_EQ(check(bigFoo()), compressed);
    // The bulk check looks at the name alone, in any case.
    put(folder() + u"/BIGfoo/run.bsh"_s);
    EXPECT_EQ(check(bigFoo()), installed);
}

TEST_P(StatusOfFamily, IsCompressedByEachOfItsNames) {
    const auto isCompressedBy = [&](const QString &name) {
        const QString file = collection() + u'/' + folder() + u'/' + name;
        put(folder() + u'/' + name);
        const std::string result = check(bigFoo());
        QFile::remove(file);
        return result;
    };
    for (const char *archive : GetParam().archives) {
        const QString name = QString::fromUtf8(archive);
        EXPECT_EQ(isCompressedBy(name.toUpper() + u".zip"_s), compressed) << archive;
        EXPECT_EQ(isCompressedBy(name + u".7z"_s), compressed) << archive;
        EXPECT_EQ(isCompressedBy(name + u".ZIP"_s), absent) << archive;
    }
    for (const char *name : never)
        EXPECT_EQ(isCompressedBy(QString::fromUtf8(name) + u".zip"_s), absent) << name;
    // What only other families go by.
    if (folder() != u"eXo/eXoDOS"_s) {
        EXPECT_EQ(isCompressedBy(u"Big Foo (1995).zip"_s), absent);
    }
    if (QStringList{u"eXo/eXoIF"_s, u"eXo/eXoDemoScn"_s, u"eXo/eXoAppleIIGS"_s}.contains(folder())) {
        EXPECT_EQ(isCompressedBy(u"Cfg.zip"_s), absent);
    }
}

TEST_P(StatusOfFamily, IsLookedForInItsOwnFolderOnly) {
    for (const Family &other : families)
        if (QByteArrayView(other.folder) != GetParam().folder)
            put(QString::fromUtf8(other.folder) + u"/BigFoo.zip"_s);
    EXPECT_EQ(check(bigFoo()), absent);
    EXPECT_EQ(look(bigFoo()), absent);
}

TEST_P(StatusOfFamily, IsFoundByACloserLook) {
    EXPECT_EQ(look(bigFoo()), absent);
    // A folder with launch scripts only is no installation.
    put(folder() + u"/BigFoo/run.bsh"_s);
    put(folder() + u"/BigFoo/install.COMMAND"_s);
    EXPECT_EQ(look(bigFoo()), absent);
    for (const char *name : {"BigFoo.zip", "BigFoo.7z", "Big: Foo.zip", "Big: Foo (1995).7z", "bigfoo v2.zip"}) {
        put(folder() + u'/' + QString::fromUtf8(name));
        EXPECT_EQ(look(bigFoo()), compressed) << name;
        QFile::remove(collection() + u'/' + folder() + u'/' + QString::fromUtf8(name));
    }
    put(folder() + u"/Big.zip"_s);
    EXPECT_EQ(look(bigFoo()), absent);
    put(folder() + u"/BigFoo/FOO.EXE"_s);
    EXPECT_EQ(look(bigFoo()), installed);
}

INSTANTIATE_TEST_SUITE_P(Families, StatusOfFamily, testing::ValuesIn(families));

TEST_F(StatusTest, NeverLooksForDocumentsMediaAndROMs) {
    for (const char *platform : {"DOS Books", "Videos", "eXo Soundtracks", "Catalogs", "Magazines", "Newsletters",
                                 "Nintendo 64", "Sony Playstation 2"}) {
        EXPECT_EQ(check(game(u"Foo"_s, QString(), QString::fromUtf8(platform))), installed) << platform;
        EXPECT_EQ(look(game(u"Foo"_s, u"a\\b\\c.conf"_s, QString::fromUtf8(platform))), installed) << platform;
    }
}

TEST_F(StatusTest, FindsWindows9xGamesInTheFoldersOfTheirYears) {
    const GamePtr foo = game(u"Foo"_s, u"eXo\\eXoWin9x\\!win9x\\1997\\Foo\\play.conf"_s, u"Windows 9x"_s);
    put(u"eXo/eXoWin9x/1997/Foo.zip"_s);
    put(u"eXo/eXoWin9x/Foo/x"_s);
    put(u"eXo/eXoWin9x/late/Foo/x"_s);
    EXPECT_EQ(check(foo), absent);
    EXPECT_EQ(look(foo), compressed);
    put(u"eXo/eXoWin9x/1997/Foo/FOO.EXE"_s);
    EXPECT_EQ(check(foo), installed);
    EXPECT_EQ(look(foo), installed);
    const CollectionScan scan = CollectionScan::scanCollectionDirectories(collection(), false);
    EXPECT_EQ(scan.names(GameFamily::windows9x).kinds("1997/foo"), NameTable::installed);
    EXPECT_EQ(scan.names(GameFamily::windows9x).kinds("foo"), NameTable::installed);

    const GamePtr yearless = game(u"Bar"_s, u"eXo\\eXoWin9x\\!win9x\\Bar\\play.conf"_s, u"Windows 9.x"_s);
    put(u"eXo/eXoWin9x/1995/Bar/BAR.EXE"_s);
    EXPECT_EQ(look(yearless), installed);
}

TEST_F(StatusTest, FindsVariantsOfTheScummVMSet) {
    put(u"eXo/eXoScummVM SVN/Foo/FOO.EXE"_s);
    EXPECT_EQ(look(game(u"Foo"_s, u"eXo\\eXoScummVM SVN\\!ScummVM\\Foo\\run.conf"_s, u"ScummVM SVN"_s)), installed);
    EXPECT_EQ(look(game(u"Foo"_s, u"eXo\\eXoScummVM\\!ScummVM\\Foo\\run.conf"_s, u"ScummVM"_s)), absent);
}

TEST_F(StatusTest, TreatsASmallArchiveInALiteCollectionAsPlaceholder) {
    const GamePtr abuse = game(u"Abuse"_s, u"eXo\\eXoDOS\\!dos\\abuse\\dosbox.conf"_s);
    put(u"eXo/eXoDOS/Abuse (1995).zip"_s, QByteArray(4096, 'x'));
    EXPECT_EQ(check(abuse), compressed);
    EXPECT_EQ(look(abuse), compressed);
    putIndex({u"Abuse (1995)"_s});
    EXPECT_EQ(check(abuse), "downloadable 2 MB");
    EXPECT_EQ(look(abuse), "downloadable 2 MB");
    put(u"eXo/eXoDOS/Abuse (1995).zip"_s, QByteArray(10'239, 'x'));
    EXPECT_EQ(check(abuse), "downloadable 2 MB");
    put(u"eXo/eXoDOS/Abuse (1995).zip"_s, QByteArray(10'240, 'x'));
    EXPECT_EQ(check(abuse), compressed);
    EXPECT_EQ(look(abuse), compressed);
}

TEST_F(StatusTest, KnowsArchivesWithoutYearAndWithEitherPlaceOfTheArticle) {
    put(u"eXo/eXoDOS/Foo (1992).zip"_s);
    put(u"eXo/eXoDOS/The Bar (1992).zip"_s);
    put(u"eXo/eXoDOS/Baz (199).zip"_s);
    put(u"eXo/eXoDOS/Élan (1992).zip"_s);
    put(u"eXo/eXoDOS/E\u0301tude (1992).zip"_s);
    put(u"eXo/eXoDOS/!Hidden (1992).zip"_s);
    put(u"eXo/eXoDOS/.zip"_s);
    const NameTable dos = CollectionScan::scanCollectionDirectories(collection(), false).names(GameFamily::dos);
    EXPECT_EQ(dos.kinds("foo (1992)"), NameTable::archive);
    EXPECT_EQ(dos.kinds("foo"), NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds("bar, the"), NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds("the bar"), NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds("baz (199)"), NameTable::archive | NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds("baz"), 0);
    EXPECT_EQ(dos.kinds(key("Élan")), NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds(key("Étude")), NameTable::archiveTitle);
    EXPECT_EQ(dos.kinds("!hidden"), 0);
    EXPECT_EQ(dos.kinds(""), 0);
    EXPECT_EQ(check(game(u"Bar, The"_s, u"!dos\\bar\\x.conf"_s)), compressed);
    EXPECT_EQ(check(game(u"ÉTUDE"_s, u"!dos\\e\\x.conf"_s)), compressed);
}

TEST_F(StatusTest, MovesArticles) {
    const std::pair<const char *, const char *> rows[]{{"Foo, The", "The Foo"},
                                                       {"The Foo", "Foo, The"},
                                                       {"A Foo, An", "An A Foo|Foo, An, A"},
                                                       {"Another Foo", ""},
                                                       {"the Foo", ""},
                                                       {"Foo,The", ""},
                                                       {"The", ""}};
    for (const auto &[name, variants] : rows)
        EXPECT_EQ(normalizeArticleVariants(QString::fromUtf8(name)).join(u'|').toStdString(), variants) << name;
}

TEST_F(StatusTest, TakesNoHiddenFolderAndNoFileForAnInstallation) {
    put(u"eXo/eXoDOS/!dos/abuse/run.bat"_s);
    put(u"eXo/eXoDOS/doom"_s);
    QFile::link(host.scratch(), collection() + u"/eXo/eXoDOS/linked"_s);
    QFile::link(u"/nowhere"_s, collection() + u"/eXo/eXoDOS/dangling"_s);
    EXPECT_EQ(check(game(u"Scripts"_s, u"eXo\\eXoDOS\\!dos"_s)), absent);
    EXPECT_EQ(check(game(u"Doom"_s, u"eXo\\eXoDOS\\!dos\\doom\\a.conf"_s)), absent);
    EXPECT_EQ(check(game(u"Linked"_s, u"eXo\\eXoDOS\\!dos\\linked\\a.conf"_s)), installed);
    EXPECT_EQ(check(game(u"Dangling"_s, u"eXo\\eXoDOS\\!dos\\dangling\\a.conf"_s)), absent);
}

TEST_F(StatusTest, FindsAFolderThatTheRecordSpellsOtherwise) {
    put(u"eXo/eXoDOS/KEEN4/KEEN4.EXE"_s);
    const GamePtr keen = game(u"Keen"_s, u"eXo\\eXoDOS\\!dos\\Keen4\\a.conf"_s);
    EXPECT_EQ(check(keen), "installed");
    EXPECT_EQ(look(keen), "installed");
}

TEST_F(StatusTest, LooksForDosArchivesInTheFolderForDownloadsToo) {
    put(u"DOWNLOAD/Abuse (1995).zip"_s);
    put(u"eXoDOS/Doom.7z"_s);
    put(u"DOWNLOAD/Quake/x"_s);
    EXPECT_EQ(check(game(u"Abuse"_s, u"!dos\\abuse\\a.conf"_s)), compressed);
    EXPECT_EQ(check(game(u"Doom"_s, u"!dos\\doom\\a.conf"_s)), compressed);
    EXPECT_EQ(check(game(u"Quake"_s, u"!dos\\quake\\a.conf"_s)), absent);
    EXPECT_EQ(check(game(u"Abuse"_s, u"!win3x\\abuse\\a.conf"_s, u"Windows 3x"_s)), absent);
}

TEST_F(StatusTest, ReadsTheNamesOfAConfigurationPath) {
    const std::tuple<const char *, const char *, const char *> rows[]{
        {"eXo\\eXoDOS\\!dos\\abuse\\dosbox.conf", "abuse", "dosbox"},
        {"eXo/eXoDOS/!dos/abuse", "abuse", ""},
        {"eXo/eXoDOS/!dos/abuse/", "abuse", ""},
        {"a\\Dr. Brain\\x.y.conf", "Dr. Brain", "x.y"},
        {"!dos\\Dr. Brain", "!dos", "Dr"},
        {"a\\\\b.conf", "a", "b"},
        {"b.conf", "", "b"},
        {"a\\.conf", "a", ".conf"},
        {"a", "a", ""},
        {"", "", ""},
        {"\\", "", ""}};
    for (const auto &[path, folder, configBase] : rows) {
        const QString whole = QString::fromUtf8(path);
        const ConfigurationNames names = ConfigurationNames::of(whole);
        EXPECT_EQ(names.folder.toString().toStdString(), folder) << path;
        EXPECT_EQ(names.configBase.toString().toStdString(), configBase) << path;
    }
}

TEST_F(StatusTest, OffersOnlyDosGamesOfALiteCollectionForDownload) {
    const GamePtr dos = game(u"Abuse"_s, u"!dos\\abuse\\a.conf"_s);
    EXPECT_EQ(check(dos), absent);
    EXPECT_EQ(look(dos), absent);
    putIndex({u"Abuse (1995)"_s, u"folder"_s});
    EXPECT_EQ(check(dos), "downloadable 2 MB");
    EXPECT_EQ(look(dos), "downloadable 2 MB");
    EXPECT_EQ(check(game(u"By Folder"_s, u"!dos\\FOLDER\\a.conf"_s)), "downloadable 2 MB");
    for (const Family &family : families) {
        if (QByteArrayView(family.folder) == "eXo/eXoDOS")
            continue;
        const GamePtr other = game(u"Abuse"_s, u"x\\folder\\a.conf"_s, QString::fromUtf8(family.platform));
        EXPECT_EQ(check(other), absent) << family.platform;
        EXPECT_EQ(look(other), absent) << family.platform;
    }
}

TEST_F(StatusTest, LooksUpTheNameOfTheScriptOfAGameWithAnotherTitle) {
    putIndex({u"Real Name (1990)"_s, u"Wrong Name"_s, u"Install Name"_s, u"Shell Name"_s});
    const GamePtr odd = game(u"Something Else"_s, u"eXo\\eXoDOS\\!dos\\Odd\\dosbox.conf"_s);
    EXPECT_EQ(check(odd), absent);
    put(u"eXo/eXoDOS/!dos/Odd/real name.bat"_s);
    put(u"eXo/eXoDOS/!dos/Odd/wrong name.bat"_s);
    EXPECT_EQ(check(odd), "downloadable 2 MB");
    QFile::remove(collection() + u"/eXo/eXoDOS/!dos/Odd/real name.bat"_s);
    QFile::remove(collection() + u"/eXo/eXoDOS/!dos/Odd/wrong name.bat"_s);
    put(u"eXo/eXoDOS/!dos/Odd/install name.bat"_s);
    EXPECT_EQ(look(odd), absent);
    EXPECT_EQ(check(odd), "downloadable 2 MB");
    put(u"eXo/eXoDOS/!dos/Odd/shell name.bsh"_s);
    EXPECT_EQ(look(odd), "downloadable 2 MB");
    // A name that leaves the script folder ends the look-up.
    put(u"eXo/eXoDOS/Up/real name.bat"_s);
    EXPECT_EQ(scriptName(collection(), u"../Up"_s, {".bat"_L1}), QString());
    EXPECT_EQ(scriptName(collection(), u".."_s, {".bat"_L1}), QString());
    EXPECT_EQ(scriptName(collection(), QString(), {".bat"_L1}), QString());
}

TEST_F(StatusTest, SearchesTheIndexCloselyForASingleGameOnly) {
    putIndex({u"Judgment Day Colour Night"_s});
    const GamePtr near = game(u"Night of the Judgement Day in Colour"_s, u"!dos\\night\\a.conf"_s);
    EXPECT_EQ(check(near), absent);
    EXPECT_EQ(look(near), "downloadable 2 MB");
}

TEST_F(StatusTest, OffersTheSpellingsOfATitleToTheIndex) {
    const auto spellings = [](const char *title, std::optional<int> year) {
        QStringList offered;
        forDownloadTitles(QString::fromUtf8(title), year, [&](const QString &spelling) {
            offered.append(spelling);
            return false;
        });
        return offered;
    };
    EXPECT_THAT(spellings("Foo", {}), ElementsAre(u"Foo"_s));
    EXPECT_THAT(spellings("Foo", 1990), ElementsAre(u"Foo"_s, u"Foo (1990)"_s));
    EXPECT_THAT(spellings("...A Nightmare", {}), ElementsAre(u"Nightmare"_s));
    EXPECT_THAT(spellings("... And More", {}), ElementsAre(u"And More"_s));
    EXPECT_THAT(spellings("..Dots", {}), ElementsAre(u"Dots"_s));
    EXPECT_THAT(spellings("....", 1990), ElementsAre());
    EXPECT_THAT(spellings("Foo, The: A:B", {}),
                ElementsAre(u"Foo, The: A:B"_s, u"Foo The: A:B"_s, u"Foo The - A:B"_s, u"Foo The - A - B"_s));
    EXPECT_THAT(spellings("A & B&C", {}), ElementsAre(u"A & B&C"_s, u"A and B&C"_s, u"A and BandC"_s));
    EXPECT_THAT(spellings("4 Big Wins: Gold", 1990),
                ElementsAre(u"4 Big Wins: Gold"_s, u"4 Big Wins - Gold"_s, u"Big Wins 4 - Gold"_s,
                            u"4 Big Wins: Gold (1990)"_s, u"4 Big Wins - Gold (1990)"_s,
                            u"Big Wins 4 - Gold (1990)"_s));
    EXPECT_THAT(spellings("4 - Gold", {}), ElementsAre(u"4 - Gold"_s));
    int offered = 0;
    EXPECT_TRUE(forDownloadTitles(u"Foo, Bar"_s, 1990, [&](const QString &) { return ++offered == 2; }));
    EXPECT_EQ(offered, 2);
}

TEST_F(StatusTest, TakesAGameWithoutUsableNamesForAbsent) {
    put(u"eXo/eXoDOS/other/GAME.EXE"_s);
    put(u"eXo/eXoDOS/other.zip"_s);
    putIndex({u"other thing"_s});
    put(u"eXo/eXoDOS/other.zip"_s, QByteArray(20'000, 'x'));
    EXPECT_EQ(look(game(u"Foo"_s, QString())), "none");
    // Without a folder of its own a game would stand for the folder of all games, and an empty title begins every name.
    for (const char *path : {"", "dosbox.conf", "a\\..\\b.conf", "\\"}) {
        EXPECT_EQ(look(game(u"Foo"_s, QString::fromUtf8(path))), absent) << path;
        EXPECT_EQ(look(game(u""_s, QString::fromUtf8(path))), absent) << path;
        EXPECT_EQ(check(game(u""_s, QString::fromUtf8(path))), absent) << path;
    }
    EXPECT_EQ(look(game(u"../eXoDOS/other"_s, u"!dos\\foo\\a.conf"_s)), absent);
}

TEST_F(StatusTest, LogsAnArchiveOfALongerName) {
    put(u"eXo/eXoDOS/FOO gold edition.7z"_s);
    EXPECT_EQ(look(game(u"foo"_s, u"!dos\\f\\a.conf"_s)), compressed);
    EXPECT_THAT(host.log().toStdString(), HasSubstr("   📦 Found archive by loose match: FOO gold edition.7z"));
}

TEST_F(StatusTest, AnswersForEveryGameInOrder) {
    put(u"eXo/eXoDOS/abuse/x"_s);
    put(u"eXo/eXoScummVM/Foo.zip"_s);
    QStringList found;
    for (const GameStatus &one : status.check(
             {game(u"Gone"_s, u"!dos\\gone\\a.conf"_s), game(u"Foo"_s, u"!ScummVM\\foo\\a.conf"_s, u"ScummVM"_s),
              game(u"Abuse"_s, u"!dos\\abuse\\a.conf"_s), game(u"Book"_s, QString(), u"Books"_s)},
             collection()))
        found.append(QString::fromStdString(text(one)));
    EXPECT_EQ(found.join(u' '), u"absent compressed installed installed"_s);
    EXPECT_TRUE(status.check({}, collection()).isEmpty());
}

TEST(NameTable, KeepsManyNamesApart) {
    NameTable table;
    for (int i = 0; i < 20'000; ++i)
        table.add("name " + std::to_string(i), i % 2 == 0 ? NameTable::installed : NameTable::archive);
    table.add("name 7", NameTable::archiveTitle);
    EXPECT_EQ(table.kinds("name 7"), NameTable::archive | NameTable::archiveTitle);
    int right = 0;
    for (int i = 0; i < 40'000; ++i)
        right += table.has("name " + std::to_string(i), NameTable::installed) == (i < 20'000 && i % 2 == 0);
    EXPECT_EQ(right, 40'000);
    EXPECT_EQ(NameTable().kinds("name"), 0);
}

} // namespace ludarium
