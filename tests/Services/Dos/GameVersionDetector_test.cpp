#include "Services/Dos/GameVersionDetector.h"

#include "DosCollection.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

/// "label/type/audio/folder/config/setup" of each option, what is absent left out.
QStringList inWords(const std::optional<GameVersionMenu> &menu) {
    QStringList lines;
    for (const GameVersionOption &option : menu ? menu->options : QList<GameVersionOption>()) {
        QStringList parts{option.label, versionTypeText(option.versionType)};
        if (option.audioType)
            parts.append(audioTypeText(*option.audioType));
        if (!option.workingDirectory.isNull())
            parts.append(u"in "_s + option.workingDirectory);
        for (auto it = option.configChanges.cbegin(); it != option.configChanges.cend(); ++it)
            parts.append(it.key() + u'=' + it.value());
        if (option.setupCommands)
            parts.append(option.setupCommands->join(u';'));
        lines.append(parts.join(u", "_s));
    }
    return lines;
}

struct FolderCase {
    const char *what;
    QStringList files; ///< in the game's folder; a name that ends in "/" is a folder
    QStringList options;
};

class FolderVersions : public testing::TestWithParam<FolderCase> {};

TEST_P(FolderVersions, AreDetectedFromTheLayout) {
    const test::DosCollection collection;
    QDir().mkpath(collection.game());
    for (const QString &file : GetParam().files)
        collection.put(file);
    const auto menu = GameVersionDetector({}).detectVersionsFromFolders(collection.game());
    EXPECT_EQ(menu.has_value(), !GetParam().options.isEmpty());
    EXPECT_EQ(inWords(menu).join(u'\n'), GetParam().options.join(u'\n'));
    if (menu) {
        EXPECT_EQ(menu->gameTitle, u"GAME"_s);
        EXPECT_EQ(menu->hasMultipleVersions, menu->options.size() > 1);
        EXPECT_EQ(menu->hasAudioOptions, GetParam().options.join(u' ').contains(u" with "_s));
        QSet<QUuid> ids;
        for (const GameVersionOption &option : menu->options)
            ids.insert(option.id);
        EXPECT_EQ(ids.size(), menu->options.size());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, FolderVersions,
    testing::Values(
        FolderCase{"NothingThere", {}, {}},
        FolderCase{"AudioFolders",
                   {u"MT32/"_s, u"sb16/a.drv"_s, u"SC55/"_s, u"AdLib/"_s, u"TANDY/"_s, u"vga/game.exe"_s},
                   {u"Floppy with MT-32, Floppy, MT-32, mididevice=mt32, MT32\\*.*"_s,
                    u"Floppy with Sound Blaster, Floppy, Sound Blaster, SB16\\*.*"_s,
                    u"Floppy with Sound Canvas, Floppy, Sound Canvas, mididevice=fluidsynth, SC55\\*.*"_s,
                    u"Floppy with AdLib, Floppy, AdLib, ADLIB\\*.*"_s,
                    u"Floppy with Tandy, Floppy, Tandy, tandy=on, TANDY\\*.*"_s}},
        FolderCase{"AudioFoldersWithADiscAndAnEnhancedVersion",
                   {u"MT32/"_s, u"CD/game.CUE"_s, u"CD/adlib/"_s, u"enhanced/SB16/"_s},
                   {u"Floppy with MT-32, Floppy, MT-32, mididevice=mt32, MT32\\*.*"_s,
                    u"CD/Talkie with AdLib, Talkie, AdLib, ADLIB\\*.*"_s,
                    u"Enhanced with Sound Blaster, Other, Sound Blaster, in enhanced, enhanced/SB16\\*.*"_s}},
        FolderCase{"ADiscFolderWithoutImagesIsNoDisc",
                   {u"MT32/"_s, u"CD/readme.txt"_s, u"CD/adlib/"_s},
                   {u"Floppy with MT-32, Floppy, MT-32, mididevice=mt32, MT32\\*.*"_s}},
        FolderCase{"FilesAreNoAudioFolders", {u"MT32"_s, u"ADLIB"_s}, {}},
        FolderCase{"VersionFolders",
                   {u"Old/game.exe"_s, u"New Talkie/GAME.BAT"_s, u"New Talkie/adlib/"_s, u"setup.d/setup.exe"_s,
                    u"saves/game.exe"_s, u".hidden/game.exe"_s, u"cd/game.exe"_s, u"art/pic.gif"_s, u"dot/.a.exe"_s},
                   {u"New Talkie with AdLib, Talkie, AdLib, in New Talkie, New Talkie/ADLIB\\*.*"_s,
                    u"Old Version, Other, in Old"_s}},
        FolderCase{"NamedFolders",
                   {u"cd/game.exe"_s, u"floppy/"_s, u"VGA/"_s, u"talkie/"_s},
                   {u"CD Version, CD, in cd"_s, u"Floppy Version, Floppy, in floppy"_s, u"VGA Version, VGA, in vga"_s,
                    u"Talkie Version, Talkie, in talkie"_s}},
        FolderCase{"ToolsBesideTheGame", {u"GAME.EXE"_s, u"EDITOR/EDIT.EXE"_s, u"vga/VIEW.COM"_s}, {}},
        FolderCase{"VersionsBesideAMenu",
                   {u"RUN.BAT"_s, u"SETUP.EXE"_s, u"ega/GAME.EXE"_s},
                   {u"ega Version, Other, in ega"_s}},
        FolderCase{"ManyVersionsBesideAProgram",
                   {u"GAME.EXE"_s, u"a/G.EXE"_s, u"b/G.EXE"_s, u"c/G.EXE"_s},
                   {u"a Version, Other, in a"_s, u"b Version, Other, in b"_s, u"c Version, Other, in c"_s}},
        FolderCase{"ADiscFolderOfImagesAlone", {u"cd/game.iso"_s, u"cd/setup.exe"_s}, {}},
        FolderCase{"DisplayFoldersWithRoms",
                   {u"herc/"_s, u"floppy/"_s, u"mt32_control.rom"_s},
                   {u"Floppy Version, Floppy, in floppy"_s,
                    u"Floppy Version with MT-32, Floppy, MT-32, in floppy, mididevice=mt32"_s,
                    u"Hercules Version with AdLib, Hercules, AdLib, in herc"_s,
                    u"Hercules Version with PC Speaker, Hercules, PC Speaker, in herc"_s,
                    u"Hercules Version with Tandy, Hercules, Tandy, in herc, tandy=on"_s,
                    u"Hercules Version with Game Blaster, Hercules, Game Blaster, in herc, sbtype=gb"_s,
                    u"Hercules Version with MT-32, Hercules, MT-32, in herc, mididevice=mt32"_s}}),
    [](const testing::TestParamInfo<FolderCase> &info) { return info.param.what; });

TEST(GameVersionDetector, SaysWhyADiscFolderIsNoVersion) {
    test::TestHost host;
    const test::DosCollection collection;
    collection.put(u"cd/game.iso"_s);
    GameVersionDetector({}).detectVersionsFromFolders(collection.game());
    EXPECT_TRUE(
        host.log().contains(u"GameVersionDetector: Skipping 'cd' folder - contains only CD images, not executables"_s));
}

GameVersionOption option(const QString &label, const QString &folder = {}, const QString &executable = {},
                         std::optional<AudioType> audio = {}) {
    GameVersionOption option;
    option.label = label;
    option.workingDirectory = folder;
    option.executable = executable;
    option.audioType = audio;
    return option;
}

struct FilterCase {
    const char *what;
    QList<GameVersionOption> options;
    const char *kept;
};

class DuplicateVersions : public testing::TestWithParam<FilterCase> {};

TEST_P(DuplicateVersions, AreDropped) {
    QStringList kept;
    for (const GameVersionOption &option : filterDuplicateVersions(GetParam().options))
        kept.append(option.label);
    EXPECT_EQ(kept.join(u' '), QString::fromUtf8(GetParam().kept));
}

INSTANTIATE_TEST_SUITE_P(
    Lists, DuplicateVersions,
    testing::Values(
        FilterCase{"None", {}, ""},
        FilterCase{"AlikeInAllFourParts",
                   {option(u"a"_s, u"x"_s, u"g.exe"_s, AudioType::mt32),
                    option(u"b"_s, u"x"_s, u"g.exe"_s, AudioType::mt32), option(u"c"_s, u"x"_s, u"g.exe"_s),
                    option(u"d"_s, u"y"_s, u"g.exe"_s), option(u"e"_s, u"x"_s, u"h.exe"_s)},
                   "a c d e"},
        FilterCase{
            "ProgramsBeatFolders", {option(u"a"_s, u"x"_s), option(u"b"_s, {}, u"g.exe"_s), option(u"c"_s)}, "b"},
        FilterCase{"FoldersBeatNothing", {option(u"a"_s), option(u"b"_s, u"x"_s), option(u"c"_s, u""_s)}, "b"},
        FilterCase{"AllAreKept", {option(u"a"_s), option(u"b"_s, {}, {}, AudioType::adlib), option(u"c"_s)}, "a b"}),
    [](const testing::TestParamInfo<FilterCase> &info) { return info.param.what; });

class DatabaseVersions : public testing::Test {
  protected:
    GameVersionDetector detector(const QByteArray &database) { return GameVersionDetector({database, {}, {}}); }
    QByteArray oneGame(const QByteArray &versions) { return R"({"Game": {"versions": [)" + versions + "]}}"; }

    test::TestHost m_host;
    test::DosCollection m_collection;
};

TEST_F(DatabaseVersions, ComeBeforeWhatTheFolderShows) {
    m_collection.put(u"MT32/"_s);
    const GameVersionDetector detector =
        this->detector(oneGame(R"({"label": "EGA", "type": "ega"}, {"label": "VGA", "type": "vga", "audio": "sc55"})"));
    const auto menu = detector.detectVersions(u"Game (1990)"_s, m_collection.game());
    ASSERT_TRUE(menu);
    EXPECT_EQ(inWords(menu), (QStringList{u"EGA, EGA"_s, u"VGA, VGA, Sound Canvas"_s}));
    EXPECT_EQ(menu->gameTitle, u"Game (1990)"_s);
    EXPECT_TRUE(menu->hasMultipleVersions && menu->hasAudioOptions);
    EXPECT_EQ(menu->options.first().origin, u"\"Game\" of the version database"_s);

    const auto other = detector.detectVersions(u"Other"_s, m_collection.game(u"OTHER"_s));
    EXPECT_FALSE(other);
    EXPECT_TRUE(m_host.log().contains(u"GameVersionDetector: 'Other' not found in database, using folder detection"_s));
}

TEST_F(DatabaseVersions, AreJoinedByTheDiscThatLiesBesideFloppies) {
    m_collection.put(u"CD/game.img"_s);
    m_collection.put(u"CD/TANDY/"_s);
    const QStringList disc{u"CD/Talkie, Talkie"_s, u"CD/Talkie with Tandy, Talkie, Tandy, tandy=on, TANDY\\*.*"_s};
    for (const char *folder : {"Floppy", "disk1", "EGA", "vga"}) {
        const QByteArray version = QByteArray(R"({"label": "A", "type": "other", "folder": ")") + folder + R"("})";
        QStringList words = inWords(detector(oneGame(version)).detectVersions(u"Game"_s, m_collection.game()));
        EXPECT_EQ(words.mid(1), disc) << folder;
        const QByteArray talkie = version + R"(, {"label": "T", "type": "talkie", "folder": "t"})";
        words = inWords(detector(oneGame(talkie)).detectVersions(u"Game"_s, m_collection.game()));
        EXPECT_EQ(words.size(), 2) << folder;
    }
    EXPECT_TRUE(m_host.log().contains(u"Found 2 CD/Talkie versions from folder detection"_s));
    const QByteArray plain = R"({"label": "A", "type": "other", "folder": "vga2"})";
    EXPECT_EQ(inWords(detector(oneGame(plain)).detectVersions(u"Game"_s, m_collection.game())).size(), 1);
}

TEST_F(DatabaseVersions, AreReplacedByTitleFromTheUsersOwnFile) {
    const QByteArray ours = R"({"A": {"versions": [{"label": "ours", "type": "cd"}]},
                                "B": {"versions": [{"label": "ours", "type": "cd"}]}})";
    const QString own = m_host.put(u"/own.json"_s, R"({"B": {"versions": [{"label": "own", "type": "vga"}]},
                                                       "C": {"versions": [{"label": "own", "type": "ega"}]}})");
    const GameVersionDetector detector({ours, own, {}});
    const auto label = [&](const QString &title) {
        const auto menu = detector.detectVersions(title, m_collection.game());
        return menu ? menu->options.first().label + u' ' + menu->options.first().origin : QString();
    };
    EXPECT_EQ(label(u"A"_s), u"ours \"A\" of the version database"_s);
    EXPECT_EQ(label(u"B"_s), u"own \"B\" of the user's own version database"_s);
    EXPECT_EQ(label(u"C"_s), u"own \"C\" of the user's own version database"_s);
}

TEST_F(DatabaseVersions, DoWithoutAFileThatCannotBeRead) {
    const QByteArray ours = oneGame(R"({"label": "ours", "type": "cd"})");
    const QString pipe = m_host.root() + u"/pipe"_s;
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &own : {m_host.put(u"/own.json"_s, "{\"Game\": 1}"), m_host.root() + u"/none"_s, pipe})
        EXPECT_EQ(inWords(GameVersionDetector({ours, own, {}}).detectVersions(u"Game"_s, m_collection.game())),
                  QStringList{u"ours, CD"_s})
            << qPrintable(own);
    for (const QString &reason :
         {m_host.root() + u"/own.json: \"Game\": it is no object"_s, pipe + u": not a regular file"_s})
        EXPECT_TRUE(m_host.log().contains(u"GameVersionDetector: Failed to load database: "_s + reason));
    EXPECT_FALSE(m_host.log().contains(u"/none"_s)) << "most users have none";

    m_collection.put(u"floppy/"_s);
    for (const QByteArray &broken : {QByteArray(), QByteArray("{"), QByteArray("")})
        EXPECT_EQ(inWords(detector(broken).detectVersions(u"Game"_s, m_collection.game())),
                  QStringList{u"Floppy Version, Floppy, in floppy"_s});
    EXPECT_TRUE(m_host.log().contains(u"GameVersionDetector: No database found"_s));
}

TEST_F(DatabaseVersions, TellWhichGamesHaveMT32Music) {
    const GameVersionDetector detector(
        {R"({"A": {"versions": [{"label": "x", "type": "cd"}, {"label": "with mt-32", "type": "cd"}]},
             "B": {"versions": [{"label": "x", "type": "cd", "audio": "MT32"}]},
             "C": {"versions": [{"label": "x", "type": "cd", "config": {"mididevice": "MT32"}}]},
             "D": {"versions": [{"label": "x", "type": "cd", "audio": "adlib", "config": {"romdir": "mt32"}}]}})",
         {},
         [](const QString &title) { return title.toLower(); }});
    EXPECT_EQ(detector.mt32GameTitles(), (QSet<QString>{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(detector.mt32NormalizedTitles(), (QSet<QString>{u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_TRUE(this->detector({}).mt32NormalizedTitles().isEmpty());
}

} // namespace
} // namespace ludarium
