#include "Services/Dos/ExecutableDetection.h"

#include "DosCollection.h"

namespace ludarium::test {
namespace {

struct DetectionCase {
    const char *name;
    const char *folder;
    const char *files;    ///< separated by blanks, ":n" for n bytes
    const char *expected; ///< "subfolder/program" or "program"; empty for nothing
};
void PrintTo(const DetectionCase &c, std::ostream *out) {
    *out << c.name;
}
class Detection : public testing::TestWithParam<DetectionCase> {};

TEST_P(Detection, PicksTheProgram) {
    DosCollection collection;
    const QString folder = collection.game(QString::fromLatin1(GetParam().folder));
    collection.put(folder + u'/');
    for (const QString &file : QString::fromLatin1(GetParam().files).split(u' ', Qt::SkipEmptyParts))
        collection.put(folder + u'/' + file.section(u':', 0, 0),
                       QByteArray(qMax(1, file.section(u':', 1).toInt()), 'x'));
    FolderView view = sortedView();
    const auto found = autoDetectExecutable(view, folder);
    const QString text = !found                      ? QString()
                         : found->subfolder.isNull() ? found->executable
                                                     : found->subfolder + u'/' + found->executable;
    EXPECT_EQ(text.toStdString(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Folders, Detection,
    testing::Values(
        DetectionCase{"tools alone", "game", "SETUP.EXE INSTALL.BAT readme.com notes.txt", ""},
        DetectionCase{"a subfolder behind tools", "game", "SETUP.EXE INSTALL.BAT DATA/Play2.EXE", "DATA/Play2.EXE"},
        DetectionCase{"the CD is never searched", "game", "Cd/A.EXE discs/B.EXE MT32/C.EXE .h/D.EXE", ".h/D.EXE"},
        DetectionCase{"a folder is no program", "game", "game.exe/x quest.com", "quest.com"},
        DetectionCase{"go before game", "x", "GAME.EXE Go.bat", "Go.bat"},
        DetectionCase{"gopher is not go", "x", "gopher.exe launch.com", "launch.com"},
        DetectionCase{"program whose name lies in the folder's", "wolf3d", "WOLF3D.BAT WOLF.EXE other.exe:90",
                      "WOLF.EXE"},
        DetectionCase{"the folder's name in the program's is no match", "doom", "doom2.exe zz.exe:90", "zz.exe"},
        DetectionCase{"a batch file gives way to a program", "quest", "QUEST.BAT OTHER.EXE", "OTHER.EXE"},
        DetectionCase{"a batch file among batch files", "quest", "AAA.BAT:90 QUEST.BAT", "QUEST.BAT"},
        DetectionCase{"the larger program", "x", "a.exe:10 b.exe:20 c.com:99", "b.exe"},
        DetectionCase{"equals stay in listing order", "x", "b.exe:10 a.exe:10", "a.exe"},
        DetectionCase{"a menu script comes last", "x", "run.exe:99 b.com:1", "b.com"},
        DetectionCase{"a lone program", "x", "quest.com", "quest.com"},
        DetectionCase{"behind a lone menu script", "x", "RUN.BAT GAME/GAME.EXE", "GAME/GAME.EXE"},
        DetectionCase{"the largest behind a menu script", "x", "RUN.BAT A/run.bat:99 B/a.com:90 B/b.exe:5 B/c.exe:7",
                      "B/c.exe"},
        DetectionCase{"a menu script with nothing behind it", "x", "RUN.BAT CD/GAME.EXE", "RUN.BAT"},
        DetectionCase{"the subfolder's name counts", "doom", "VGA/DOOM.EXE VGA/VGA.EXE", "VGA/VGA.EXE"},
        DetectionCase{"a lone menu script in a subfolder", "x", "SUB/RUN.BAT SUB2/GAME.EXE", "SUB/RUN.BAT"}));

TEST(DatabaseExecutable, IsRefusedWhenDosBoxItselfWouldRunIt) {
    const std::pair<const char *, bool> cases[] = {
        {"GAME.EXE", true},    {"imgmount d game.iso", false},
        {"start.exe", false},  {"Start", false},
        {"boot x.img", false}, {"BOOT.COM", false},
        {"call start", true},  {"call ", false},
        {"startup.exe", true}, {" game -x ", true},
    };
    for (const auto &[text, valid] : cases)
        EXPECT_EQ(isValidDatabaseExecutable(QString::fromLatin1(text)), valid) << text;
}

TEST(DetectionReport, ListsWhatWasSeenAndChosen) {
    DosCollection collection;
    for (const char *file : {"SETUP.EXE", "a.txt", "SUB/B.EXE", "SUB/C.com"})
        collection.put(QString::fromLatin1(file));
    FolderView view = sortedView();
    const QStringList expected{QStringLiteral("📋 AUTO-DETECT REPORT for 'A \"title\"'"),
                               QStringLiteral("   Folder: GAME"), QStringLiteral("   Root executables: SETUP.EXE"),
                               QStringLiteral("   Subfolder 'SUB' executables: B.EXE, C.com"),
                               QStringLiteral("   Selected: B.EXE (in SUB)")};
    EXPECT_EQ(autoDetectReport(view, QStringLiteral("A \"title\""), collection.game(),
                               {QStringLiteral("B.EXE"), QStringLiteral("SUB")}),
              expected);
    EXPECT_EQ(autoDetectReport(view, {}, collection.game() + QStringLiteral("/SUB"), {QStringLiteral("B.EXE"), {}})[2],
              QStringLiteral("   Root executables: B.EXE, C.com"));
}

TEST(FolderViews, ListEachFolderOnce) {
    DosCollection collection;
    collection.put(QStringLiteral("Sub/File.TXT"));
    int listed = 0;
    FolderView view([&](const QString &folder) {
        ++listed;
        return listFolder(folder);
    });
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(view.resolve(collection.game(), QStringLiteral("sUB/file.txt")),
                  collection.game() + QStringLiteral("/Sub/File.TXT"));
    EXPECT_EQ(listed, 2);
}

TEST(FolderViews, FindNothingOutsideTheFolder) {
    DosCollection collection;
    collection.put(QStringLiteral("a"));
    // A network drive may name the folder above in its listing.
    FolderView view(
        [](const QString &folder) { return listFolder(folder).value_or(QStringList()) << QStringLiteral(".."); });
    for (const char *path : {"../GAME", "/etc/passwd", "..", ".", "", "a/../a", "a\\b"})
        EXPECT_TRUE(view.resolve(collection.game(), QString::fromLatin1(path)).isNull()) << path;
}

} // namespace
} // namespace ludarium::test
