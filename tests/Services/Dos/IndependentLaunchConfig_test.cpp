#include "Services/Dos/IndependentLaunchConfig.h"

#include "DosCollection.h"
#include "Models/LaunchError.h"

namespace ludarium::test {
namespace {

GameVersionOption option(const char *executable, const char *workingDirectory = nullptr, bool atGameLevel = false) {
    GameVersionOption version;
    version.executable = QString::fromUtf8(executable);
    version.workingDirectory = QString::fromUtf8(workingDirectory);
    version.mountAtGameLevel = atGameLevel;
    return version;
}

struct ConfigCase {
    const char *name;
    QStringList files; ///< in the game's folder, "name=content" for a text
    GameVersionOption version;
    QByteArray base;
    QByteArray expected; ///< what stands behind "[autoexec]"; "{C}" is the collection
};

void PrintTo(const ConfigCase &c, std::ostream *out) {
    *out << c.name;
}

class LaunchConfig : public testing::TestWithParam<ConfigCase> {};

QByteArray made(const DosCollection &collection, const GameVersionOption &version, const QByteArray &base,
                const QString &folder, const QString &keys = QStringLiteral("Fn+Cmd+F4")) {
    FolderView view = sortedView();
    return createIndependentLaunchConfig({base, folder, collection.root(), version, keys}, view).text;
}

TEST_P(LaunchConfig, MountsAndStartsTheVersion) {
    const ConfigCase &c = GetParam();
    DosCollection collection;
    collection.put(QStringLiteral("./"));
    for (const QString &file : c.files)
        collection.put(file.section(u'=', 0, 0),
                       file.contains(u'=') ? file.section(u'=', 1).toUtf8() : QByteArray("x"));
    const QByteArray base = c.base.isNull() ? QByteArray("[cpu]\ncycles=auto\n[autoexec]\nold\n") : c.base;
    const QByteArray text = collection.portable(made(collection, c.version, base, collection.game()));
    const qsizetype autoexec = text.lastIndexOf("\n[autoexec]\n");
    ASSERT_GE(autoexec, 0);
    EXPECT_EQ(text.mid(autoexec + 12).toStdString(), c.expected.toStdString());
}

GameVersionOption withSetup(GameVersionOption version, const QStringList &commands) {
    version.setupCommands = commands;
    return version;
}

#define S(text) QStringLiteral(text)
const ConfigCase configCases[] = {
    {"a plain game",
     {S("GAME.EXE")},
     option("game.exe"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit"},
    {"arguments and a leading at sign",
     {S("Quest.Com")},
     option("@QUEST -level 3"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall Quest.Com -level 3\nexit"},
    {"a CD game with its program on C:",
     {S("GAME.EXE"), S("cd/a.cue"), S("cd/a.iso")},
     option("GAME.EXE"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/cd/a.cue\" -t cdrom\nC:\ncd GAME\n"
     "call GAME.EXE\nexit"},
    {"a program that is on the CD",
     {S("CD/a.iso")},
     option("play.exe"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/CD/a.iso\" -t cdrom\nD:\ncall play.exe\nexit"},
    {"a folder on the CD",
     {S("CD/a.iso")},
     option("play.exe", "GAMEDIR"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/CD/a.iso\" -t cdrom\nD:\ncd GAMEDIR\n"
     "call play.exe\nexit"},
    {"several discs",
     {S("discs/Disc 10.cue"), S("discs/Disc 2.cue"), S("discs/Disc 1.cue"), S("G.EXE")},
     option("g.exe"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/discs/Disc 1.cue\" "
     "\"{C}/eXo/eXoDOS/GAME/discs/Disc 2.cue\" \"{C}/eXo/eXoDOS/GAME/discs/Disc 10.cue\" -t cdrom\n@echo.\n"
     "@echo This game has 3 discs. Press Fn+Cmd+F4 to swap discs when prompted.\n@echo.\n@pause\nC:\ncd GAME\n"
     "call G.EXE\nexit"},
    {"C: at the game's folder",
     {S("GAME.EXE")},
     option("GAME.EXE", nullptr, true),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS/GAME\"\nC:\ncd \ncall GAME.EXE\nexit"},
    {"C: at the game's folder with a folder and setup commands",
     {S("VGA/GAME.EXE")},
     withSetup(option("GAME.EXE", "VGA", true), {S("del A.CFG"), S("copy B.CFG A.CFG")}),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS/GAME\"\nC:\ncd VGA\ndel A.CFG\ncopy B.CFG A.CFG\ncall GAME.EXE\nexit"},
    {"setup commands are left out above the game's folder",
     {S("GAME.EXE")},
     withSetup(option("GAME.EXE"), {S("del A.CFG")}),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit"},
    {"a folder of the version, spelled otherwise on disk",
     {S("vga/game.exe")},
     option("GAME", "VGA"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME/VGA\ncall game.exe\nexit"},
    {"a folder of the version that is not there",
     {S("GAME.EXE")},
     option("GAME.EXE", "VGA"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit"},
    {"a folder named like the game's own",
     {S("G.EXE")},
     option("G.EXE", "GAME"),
     {},
     "MOUNT C: \"{C}/eXo\"\nC:\ncd eXoDOS/GAME\ncall G.EXE\nexit"},
    {"a folder outside the game's is not entered",
     {S("GAME.EXE")},
     option("GAME.EXE", "../OTHER"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit"},
    {"a program in a folder of its name on a CD game",
     {S("cd/a.iso"), S("QUEST/QUEST.EXE")},
     option("quest"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/cd/a.iso\" -t cdrom\nC:\ncd GAME\ncd quest\n"
     "cd QUEST\ncall QUEST.EXE\nexit"},
    {"a program named like the game's folder",
     {S("GAME.EXE")},
     option("GAME"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncd GAME\ncall GAME.EXE\nexit"},
    {"a program above its disc folder",
     {S("CD1/cd/a.iso"), S("GAME.EXE")},
     option("GAME.EXE", "CD1"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/CD1/cd/a.iso\" -t cdrom\nC:\ncd GAME\n"
     "call GAME.EXE\nexit"},
    {"discs beside the version's folder",
     {S("disc/a.img"), S("VGA/G.EXE")},
     option("G.EXE", "VGA"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/disc/a.img\" -t cdrom\nC:\ncd GAME/VGA\n"
     "call G.EXE\nexit"},
    {"images directly in the game's folder are none",
     {S("a.cue"), S("GAME.EXE")},
     option("GAME.EXE"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit"},
    {"a call of a batch file in the game's folder",
     {S("PLAY.BAT")},
     option("call play"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall play\nexit"},
    {"a call of a batch file in a subfolder",
     {S("SUB/PLAY.BAT")},
     option("@call play.bat"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncd SUB\ncall play.bat\nexit"},
    {"a call in a subfolder of a CD game goes back to C:",
     {S("cd/a.iso"), S("SUB/PLAY.BAT")},
     option("call play"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/cd/a.iso\" -t cdrom\nC:\ncd GAME\ncd SUB\n"
     "call play\nexit"},
    {"a program found in a subfolder",
     {S(".hidden/QUEST.EXE"), S("disk1/QUEST.EXE"), S("BIN/QUEST.EXE")},
     option("quest -x"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncd BIN\ncall QUEST.EXE -x\nexit"},
    {"a folder is no program",
     {S("QUEST/readme"), S("BIN/QUEST.EXE")},
     option("quest"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncd BIN\ncall QUEST.EXE\nexit"},
    {"a batch file that means another root",
     {S("GO.BAT=@echo off\r\nc:\r\nREM start\r\ncd \\Sub\\Deep\r\n@GAME.EXE /x\r\ncd \\\r\n"), S("Sub/Deep/GAME.EXE")},
     option("go.bat"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME/Sub/Deep\ncall GAME.EXE /x\nexit"},
    {"a batch file whose folder is not there",
     {S("GO.BAT=cd \\Elsewhere\r\nGAME.EXE\r\n"), S("GAME.EXE")},
     option("go.bat"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GO.BAT\nexit"},
    {"a batch file that leads out of the game",
     {S("GO.BAT=cd \\..\\..\r\nGAME.EXE\r\n"), S("GAME.EXE")},
     option("go.bat"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GO.BAT\nexit"},
    {"no program at all", {S("GAME.EXE")}, option(nullptr), {}, "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\nexit"},
    {"a floppy game with a CD",
     {S("cd/a.iso"), S("d1.img"), S("d2.img")},
     option("game.exe"),
     "[autoexec]\r\nimgmount a .\\other.img -t floppy\r\n"
     "imgmount a .\\eXoDOS\\GAME\\D1.img .\\eXoDOS\\GAME\\d2.img -t floppy\r\na:\r\n",
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nIMGMOUNT D: \"{C}/eXo/eXoDOS/GAME/cd/a.iso\" -t cdrom\n"
     "imgmount a \"{C}/eXo/eXoDOS/GAME/d1.img\" \"{C}/eXo/eXoDOS/GAME/d2.img\" -t floppy\nA:\ncall game.exe\nexit"},
    {"setup command in an unknown script",
     {S("GAME.EXE")},
     option("setup.exe;x"),
     {},
     "MOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall setup.exe;x\nexit"},
};
#undef S

INSTANTIATE_TEST_SUITE_P(Games, LaunchConfig, testing::ValuesIn(configCases));

TEST(LaunchConfigText, KeepsEveryOtherSectionByteForByte) {
    DosCollection collection;
    collection.put(QStringLiteral("GAME.EXE"));
    const QByteArray before = "# caf\xe9 \x82\x8a\r\n[cpu]\r\ncycles=3000\r\n";
    const QByteArray after = "\n[dosbox]\r\nmachine=ega\r\n";
    const QByteArray text =
        made(collection, option("GAME.EXE"), before + "[AutoExec]\r\nmount c .\r\nold" + after, collection.game());
    EXPECT_EQ(
        collection.portable(text).toStdString(),
        (before + after + "\n[autoexec]\nMOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME\ncall GAME.EXE\nexit").toStdString());
}

TEST(LaunchConfigText, TellsTheKeysOfThisMachine) {
    DosCollection collection;
    collection.put(QStringLiteral("cd/1.cue"));
    collection.put(QStringLiteral("cd/2.cue"));
    EXPECT_TRUE(made(collection, option("x"), {}, collection.game(), QStringLiteral("Ctrl+F4"))
                    .contains("2 discs. Press Ctrl+F4 to swap discs"));
}

TEST(LaunchConfigText, FindsTheDiscsOfAVersionFolderThatIsGivenAsTheGame) {
    DosCollection collection;
    collection.put(QStringLiteral("VGA/G.EXE"));
    const QByteArray text = made(collection, option("G.EXE", "VGA"), {}, collection.game() + QStringLiteral("/VGA"));
    EXPECT_EQ(collection.portable(text),
              "\n[autoexec]\nMOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME/VGA\ncall G.EXE\nexit");
}

TEST(LaunchConfigText, WritesHostNamesAsTheirBytesAndDosTextsAsLatin1) {
    DosCollection collection;
    const QString folder = collection.game(QString::fromUtf8("Jürgens 日本 $(x) `y` 50%"));
    collection.put(folder + QString::fromUtf8("/SPÄT.EXE"));
    const QByteArray text = collection.portable(made(collection, option("spät.exe \xC3\xA9"), {}, folder));
    EXPECT_TRUE(text.contains("cd Jürgens 日本 $(x) `y` 50%\ncall SPÄT.EXE \xE9\nexit")) << text.constData();
}

TEST(LaunchConfigText, DoublesPercentSignsWhereTheGuestWouldReplaceThem) {
    DosCollection collection;
    const QString folder = collection.root() + QStringLiteral("/100%PATH%/GAME");
    collection.put(folder + QStringLiteral("/GAME.EXE"));
    EXPECT_TRUE(made(collection, option("GAME.EXE"), {}, folder).contains("/100%%PATH%%\"\n"));
}

struct RefusedCase {
    const char *name;
    GameVersionOption version;
    const char *folder;
};
void PrintTo(const RefusedCase &c, std::ostream *out) {
    *out << c.name;
}
class RefusedConfig : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedConfig, RefusesTheLaunch) {
    DosCollection collection;
    const QString folder = collection.root() + QString::fromUtf8(GetParam().folder);
    collection.put(folder + QStringLiteral("/GAME.EXE"));
    EXPECT_THROW(made(collection, GetParam().version, {}, folder), LaunchError);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, RefusedConfig,
    testing::Values(RefusedCase{"a program with a line break", option("GAME.EXE\n[cpu]"), "/GAME"},
                    RefusedCase{"a call with a carriage return", option("call a\rb"), "/GAME"},
                    RefusedCase{"a working directory with a line break", option("GAME.EXE", "A\nB", true), "/GAME"},
                    RefusedCase{"a setup command with a line break",
                                withSetup(option("GAME.EXE", nullptr, true), {QStringLiteral("del a\nformat c:")}),
                                "/GAME"},
                    RefusedCase{"a path with a double quote", option("GAME.EXE"), "/a\"b/GAME"},
                    RefusedCase{"a path with a line break", option("GAME.EXE"), "/a\nb/GAME"}));

TEST(LaunchConfigText, KeepsToItselfWithALinkThatLeadsNowhere) {
    DosCollection collection;
    collection.put(QStringLiteral("GAME.EXE"));
    QFile::link(QStringLiteral("/nowhere/at/all"), collection.game() + QStringLiteral("/cd"));
    EXPECT_FALSE(made(collection, option("GAME.EXE"), {}, collection.game()).contains("IMGMOUNT"));
}

} // namespace
} // namespace ludarium::test
