#include "Services/Launch/GameFolders.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace ludarium;
using namespace Qt::StringLiterals;

namespace {

struct PathCase {
    QString path;
    QString name;
    QString scriptFolder; ///< below the collection; null when there is none
};

void PrintTo(const PathCase &path, std::ostream *out) {
    *out << qPrintable(path.path);
}

class Paths : public testing::TestWithParam<PathCase> {};

const QString collection = u"/mnt/collection"_s;

} // namespace

TEST_P(Paths, GiveAFolderNameAndAScriptFolder) {
    const PathCase &path = GetParam();
    EXPECT_EQ(GameFolders::extractGameFolderName(path.path), path.name);
    const QString folder = GameFolders::scriptFolder(path.path, collection);
    EXPECT_EQ(folder, path.scriptFolder.isNull() ? QString() : collection + path.scriptFolder);
}

INSTANTIATE_TEST_SUITE_P(
    Honest, Paths,
    testing::Values(PathCase{u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s, u"doom"_s, u"/eXo/eXoDOS/!dos/doom"_s},
                    PathCase{u"eXo\\eXoDOS\\!dos\\doom"_s, u"doom"_s, u"/eXo/eXoDOS/!dos/doom"_s},
                    PathCase{u"eXo/eXoDOS/doom/doom.bat"_s, u"doom"_s, u"/eXo/eXoDOS/doom"_s},
                    PathCase{u"eXo\\eXoDOS\\!dos"_s, u""_s, u"/eXo/eXoDOS/!dos"_s},
                    PathCase{u"eXo\\eXoDOS\\doom"_s, u""_s, u"/eXo/eXoDOS/doom"_s},
                    PathCase{u"\\eXo\\\\eXoDOS\\!dos\\a.b\\"_s, u"a.b"_s, u"/eXo/eXoDOS/!dos/a.b"_s},
                    PathCase{u".\\eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s, u"doom"_s, u"/eXo/eXoDOS/!dos/doom"_s},
                    PathCase{u"eXo\\eXoWin9x\\!win9x\\1995\\foo\\foo.bat"_s, u"1995"_s,
                             u"/eXo/eXoWin9x/!win9x/1995/foo"_s},
                    PathCase{u"doom.bat"_s, u""_s, u""_s}, PathCase{u""_s, u""_s, u""_s}));

INSTANTIATE_TEST_SUITE_P(Hostile, Paths,
                         testing::Values(PathCase{u"eXo\\..\\..\\etc\\x.bat"_s, u"etc"_s, {}},
                                         PathCase{u"../../!dos/doom/doom.bat"_s, u"doom"_s, {}},
                                         PathCase{u"eXo/!dos/../x.bat"_s, u".."_s, {}},
                                         PathCase{u"eXo/!dos/a\nb/x.bat"_s, u"a\nb"_s, {}},
                                         PathCase{u"/etc/passwd"_s, u""_s, u"/etc/passwd"_s}));

namespace {

struct DataCase {
    QString platform;
    QString configurationPath;
    std::optional<int> year;
    QString expected; ///< below {collection}/eXo; null when there is none
};

void PrintTo(const DataCase &data, std::ostream *out) {
    *out << qPrintable(data.platform) << ' ' << qPrintable(data.configurationPath);
}

class DataFolders : public testing::TestWithParam<DataCase> {};

} // namespace

TEST_P(DataFolders, FollowThePlatform) {
    Game game;
    game.platform = GetParam().platform;
    game.configurationPath = GetParam().configurationPath;
    game.releaseYear = GetParam().year;
    const QString expected = GetParam().expected.isNull() ? QString() : collection + u"/eXo/"_s + GetParam().expected;
    EXPECT_EQ(GameFolders::dataFolder(game, collection), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DataFolders,
    testing::Values(
        DataCase{u"MS-DOS"_s, u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s, 1993, u"eXoDOS/doom"_s},
        DataCase{u"ScummVM"_s, u"eXo\\eXoScummVM_SVN\\!scummvm\\loom\\loom.bat"_s, {}, u"eXoScummVM_SVN/loom"_s},
        DataCase{u"ScummVM SVN"_s, u"eXo\\other\\!scummvm\\loom\\loom.bat"_s, {}, u"eXoScummVM/loom"_s},
        DataCase{u"A DReaMM set"_s, u"eXo\\eXoDREAMM\\!dreamm\\dott\\dott.bat"_s, {}, u"eXoDREAMM/dott"_s},
        DataCase{u"Windows 3.x"_s, u"eXo\\eXoWin3x\\!win3x\\foo\\foo.bat"_s, 1992, u"eXoWin3x/foo"_s},
        DataCase{u"Windows 9x"_s, u"eXo\\eXoWin9x\\!win9x\\foo\\foo.bat"_s, 1997, u"eXoWin9x/1997/foo"_s},
        DataCase{u"Windows 9.x"_s, u"eXo\\eXoWin9x\\!win9x\\foo\\foo.bat"_s, {}, u"eXoWin9x/foo"_s},
        DataCase{u"Apple IIGS"_s, u"eXo\\eXoAppleIIGS\\!appleiigs\\foo\\foo.bat"_s, {}, u"eXoAppleIIGS/foo"_s},
        // Without a usable name there is no folder: never that of all games.
        DataCase{u"MS-DOS"_s, {}, {}, {}}, DataCase{u"MS-DOS"_s, u"doom.bat"_s, {}, {}},
        DataCase{u"MS-DOS"_s, u"eXo/!dos/../x.bat"_s, {}, {}},
        DataCase{u"Windows 9x"_s, u"eXo/!win9x/./x.bat"_s, 1997, {}}));

TEST(GameFoldersOnDisk, AreFoundInAnotherSpellingAndNotBehindALinkOutOfTheCollection) {
    QTemporaryDir directory, elsewhere;
    const QString root = directory.path() + u"/set"_s;
    for (const QString &folder : {u"/eXo/eXoDOS/!dos/Doom"_s, u"/eXo/eXoDOS/DOOM"_s, u"/eXo/eXoDOS/shared"_s})
        QDir().mkpath(root + folder);
    Game game;
    game.platform = u"MS-DOS"_s;
    game.configurationPath = u"EXO\\exodos\\!DOS\\doom\\doom.bat"_s;
    EXPECT_EQ(GameFolders::scriptFolder(game.configurationPath, root), root + u"/eXo/eXoDOS/!dos/Doom"_s);
    EXPECT_EQ(GameFolders::dataFolder(game, root), root + u"/eXo/eXoDOS/DOOM"_s);

    const auto linked = [&](const QString &name, const QString &target) {
        EXPECT_TRUE(QFile::link(target, root + u"/eXo/eXoDOS/"_s + name));
        game.configurationPath = u"eXo\\eXoDOS\\!dos\\%1\\a.bat"_s.arg(name);
        return GameFolders::dataFolder(game, root);
    };
    EXPECT_EQ(linked(u"out"_s, elsewhere.path()), QString());
    EXPECT_EQ(linked(u"in"_s, root + u"/eXo/eXoDOS/shared"_s), root + u"/eXo/eXoDOS/in"_s);
    // A whole set may lie on another disk.
    QDir().mkpath(elsewhere.path() + u"/games/doom"_s);
    QDir(root + u"/eXo/eXoDOS"_s).removeRecursively();
    EXPECT_TRUE(QFile::link(elsewhere.path() + u"/games"_s, root + u"/eXo/eXoDOS"_s));
    game.configurationPath = u"eXo\\eXoDOS\\!dos\\doom\\doom.bat"_s;
    EXPECT_EQ(GameFolders::dataFolder(game, root), root + u"/eXo/eXoDOS/doom"_s);
}
