#include "Services/Dos/MinimalConfig.h"
#include "Services/Dos/OverlayConfig.h"
#include "Services/Dos/ScriptFolderConfig.h"

#include "DosCollection.h"
#include "Models/LaunchError.h"

namespace ludarium::test {
namespace {

GameVersionOption version(VersionType type, std::optional<AudioType> audio = {}) {
    GameVersionOption result;
    result.versionType = type;
    result.audioType = audio;
    return result;
}

TEST(Overlay, HoldsDisplayAndRenderSettings) {
    DosCollection collection;
    FolderView view;
    const QByteArray head = "# Ludarium Independent Overlay Config\n# Generated at runtime - replaces eXo shared "
                            "configs\n\n";
    EXPECT_EQ(createIndependentOverlayConfig({}, collection.root(), {}, view),
              head + "[sdl]\nfullscreen = true\nfullresolution = desktop\nwindowresolution = 1280x960\noutput = "
                     "opengl\n\n[render]\ninteger_scaling = off\nglshader = crt-lottes\n\n");
    DosSettings plain;
    plain.fullscreen = plain.crtEffects = false;
    EXPECT_EQ(createIndependentOverlayConfig(plain, collection.root(), {}, view),
              head + "[sdl]\nfullscreen = false\nfullresolution = desktop\nwindowresolution = 1280x960\noutput = "
                     "opengl\n\n[render]\ninteger_scaling = off\n\n");
}

TEST(Overlay, HoldsTheVersionsSoundAndTheCollectionsRoms) {
    DosCollection collection;
    collection.put(collection.root() + QStringLiteral("/eXo/emulators/dosbox/mt32/SoundCanvas.sf2"));
    GameVersionOption hercules = version(VersionType::hercules);
    for (const auto &[key, value] :
         {std::pair{"SBType", "sb16"}, {"tandy", "on"}, {"mididevice", "mt32"}, {"gus", "true"}})
        hercules.configChanges.insert(QString::fromLatin1(key), QString::fromLatin1(value));
    FolderView view;
    const QByteArray text = collection.portable(createIndependentOverlayConfig({}, collection.root(), hercules, view));
    EXPECT_EQ(text.mid(text.indexOf("[mono")),
              "[mono_display]\nmonochrome_palette = white\n\n[sblaster]\nsbtype = sb16\n\n[speaker]\ntandy = on\n\n"
              "[midi]\nmididevice = mt32\n\n[fluidsynth]\nsoundfont = {C}/eXo/emulators/dosbox/mt32/SoundCanvas.sf2\n\n"
              "[mt32]\nromdir = {C}/eXo/emulators/dosbox/mt32\n\n");
    hercules.configChanges.insert(QStringLiteral("tandy"), QStringLiteral("on\n[autoexec]\nformat"));
    EXPECT_THROW(createIndependentOverlayConfig({}, collection.root(), hercules, view), LaunchError);
}

TEST(Overlay, TakesTheFirstFolderThatHoldsMt32Roms) {
    DosCollection collection;
    DosSettings settings;
    for (const char *file : {"/one/notes.txt", "/two/MT32_CONTROL.ROM", "/three/CM32L_CONTROL.ROM"})
        settings.mt32Folders.append(parentPath(collection.put(collection.root() + QString::fromLatin1(file))));
    FolderView view;
    EXPECT_TRUE(collection.portable(createIndependentOverlayConfig(settings, collection.root(), {}, view))
                    .endsWith("[mt32]\nromdir = {C}/two\n\n"));
}

struct MinimalCase {
    const char *name;
    const char *files; ///< separated by "|"
    const char *workingDirectory;
    const char *executable;
    const char *expected; ///< behind "@echo off"
};
void PrintTo(const MinimalCase &c, std::ostream *out) {
    *out << c.name;
}
class Minimal : public testing::TestWithParam<MinimalCase> {};

TEST_P(Minimal, StartsWhatItFinds) {
    DosCollection collection;
    for (const QString &file : QString::fromLatin1(GetParam().files).split(u'|'))
        collection.put(file);
    GameVersionOption chosen;
    chosen.workingDirectory = QString::fromLatin1(GetParam().workingDirectory);
    chosen.executable = QString::fromLatin1(GetParam().executable);
    FolderView view = sortedView();
    const QByteArray text =
        collection.portable(createMinimalDOSBoxConfig({}, collection.game(), chosen, collection.root(), view));
    EXPECT_EQ(text.mid(text.indexOf("@echo off\n") + 10).toStdString(), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Folders, Minimal,
    testing::Values(
        MinimalCase{"a named program", "A.EXE", nullptr, "b.exe -x",
                    "mount c \"{C}/eXo/eXoDOS\"\nc:\nb.exe -x\nexit\n"},
        MinimalCase{"the usual names in their order", "GO.EXE|Run.Bat|a.exe", nullptr, nullptr,
                    "mount c \"{C}/eXo/eXoDOS\"\nc:\nRun.Bat\nexit\n"},
        MinimalCase{"no tool", "install.exe|setupx.exe|patch1.bat|zork.exe", nullptr, nullptr,
                    "mount c \"{C}/eXo/eXoDOS\"\nc:\nzork.exe\nexit\n"},
        MinimalCase{"a CD and a subfolder", "Cd/b.iso|Cd/a.exe|SUB/zork.bat", nullptr, nullptr,
                    "mount c \"{C}/eXo/eXoDOS\"\nimgmount d \"{C}/eXo/eXoDOS/GAME/Cd/b.iso\" -t cdrom\nc:\ncd SUB\n"
                    "zork.bat\nexit\n"},
        MinimalCase{"a version's folder with its own CD", "VGA/cd/b.iso|VGA/zork.exe", "VGA", nullptr,
                    "mount c \"{C}/eXo/eXoDOS\"\nimgmount d \"{C}/eXo/eXoDOS/GAME/VGA/cd/b.iso\" -t cdrom\nc:\ncd VGA\n"
                    "zork.exe\nexit\n"},
        MinimalCase{"a version's empty folder", "VGA/setup.exe|zork.exe", "VGA", nullptr,
                    "mount c \"{C}/eXo/eXoDOS\"\nc:\ncd VGA\ncd \\\nzork.exe\nexit\n"},
        MinimalCase{"nothing to start", "readme.txt", nullptr, nullptr, "mount c \"{C}/eXo/eXoDOS\"\nc:\nexit\n"}));

TEST(MinimalConfigs, SetTheMachineUp) {
    const QByteArray common = "[cpu]\ncycles = auto\n\n[mixer]\nrate = 48000\n\n[midi]\nmididevice = ";
    const std::pair<GameVersionOption, QByteArray> cases[] = {
        {version(VersionType::vga), "[dosbox]\nmachine = svga_s3\n\n" + common + "default\n\n"},
        {version(VersionType::cga, AudioType::tandy),
         "[dosbox]\nmachine = cga\n\n" + common + "default\n\n[speaker]\ntandy = on\n\n"},
        {version(VersionType::ega, AudioType::mt32), "[dosbox]\nmachine = ega\n\n" + common + "mt32\n\n"},
        {version(VersionType::hercules, AudioType::adlib),
         "[dosbox]\nmachine = hercules\n\n[mono_display]\nmonochrome_palette = white\n\n" + common +
             "default\n\n[sblaster]\nsbtype = none\noplmode = opl2\n\n"},
        {version(VersionType::cd, AudioType::gameBlaster),
         "[dosbox]\nmachine = svga_s3\n\n" + common + "default\n\n[sblaster]\nsbtype = gb\n\n"},
        {version(VersionType::cd, AudioType::pcSpeaker),
         "[dosbox]\nmachine = svga_s3\n\n" + common + "default\n\n[sblaster]\nsbtype = none\n\n"},
    };
    DosCollection collection;
    for (const auto &[chosen, expected] : cases) {
        FolderView view;
        const QByteArray text = createMinimalDOSBoxConfig({}, collection.game(), chosen, collection.root(), view);
        const qsizetype from = text.indexOf("[dosbox]");
        EXPECT_EQ(text.mid(from, text.indexOf("[autoexec]") - from).toStdString(), expected.toStdString());
    }
}

struct AdaptCase {
    const char *name;
    QByteArray text;
    QByteArray expected;
};
void PrintTo(const AdaptCase &c, std::ostream *out) {
    *out << c.name;
}
class Adapted : public testing::TestWithParam<AdaptCase> {};

TEST_P(Adapted, RunsFromAnyFolder) {
    DosCollection collection;
    collection.put(QStringLiteral("RUN.BAT"), "@echo off\r\nCHOICE /c:12\r\n");
    collection.put(QStringLiteral("start.bat"), "zork.exe\r\n");
    collection.put(QStringLiteral("BIN/zork.exe"));
    collection.put(QStringLiteral("cd/Disc 1.CUE"));
    DosSettings settings;
    settings.fullscreen = false;
    FolderView view = sortedView();
    EXPECT_EQ(
        collection
            .portable(adaptScriptFolderConfig(GetParam().text, settings, collection.game(), collection.root(), view))
            .toStdString(),
        GetParam().expected.toStdString());
}
// With "start.bat" as the preferred name, detection chooses it in this folder.
INSTANTIATE_TEST_SUITE_P(
    Texts, Adapted,
    testing::Values(
        AdaptCase{"display settings", "[sdl]\r\nFullScreen = true\r\n[Render]\nscaler=none\n# \xe9",
                  "[sdl]\r\nfullscreen=false\r\n[Render]\nglshader=crt-lottes\nscaler=none\n# \xe9"},
        AdaptCase{"inside the autoexec section nothing is a setting", "[AUTOEXEC]\nfullscreen\n",
                  "[AUTOEXEC]\nfullscreen\n"},
        AdaptCase{"paths",
                  "[autoexec]\nCD ..\n@cd ..\ncd ..\\x\nmount c .\\eXoDOS\\game\\ -freesize 10\r\n"
                  "imgmount d \".\\eXoDOS\\GAME\\CD\\disc 1.cue\" -t cdrom\nimgmount e .\\eXoDOS\\a b.iso",
                  "[autoexec]\nmount c \"{C}/eXo/eXoDOS/GAME\" -freesize 10\r\n"
                  "imgmount d \"{C}/eXo/eXoDOS/GAME/cd/Disc 1.CUE\" -t cdrom\nimgmount e \"{C}/eXo/eXoDOS/a b.iso\""},
        AdaptCase{"outside the section a path stays", "[sdl]\nmapperfile=.\\eXoDOS\\m.txt",
                  "[sdl]\nmapperfile=.\\eXoDOS\\m.txt"},
        AdaptCase{"a menu is replaced by the program", "[autoexec]\nc:\n@call run\n",
                  "[autoexec]\nc:\ncall start.bat\nexit"},
        AdaptCase{"a menu before another section", "[autoexec]\ncall RUN.bat\n[cpu]\ncycles=auto\n",
                  "[autoexec]\n[cpu]\ncycles=auto\n[autoexec]\ncall start.bat\nexit"},
        AdaptCase{"a simple launcher stays", "[autoexec]\ncall start.bat\nexit", "[autoexec]\ncall start.bat\nexit"},
        AdaptCase{"no candidate", "[autoexec]\ncall runme.exe\ncall run.exe\ncall runner",
                  "[autoexec]\ncall runme.exe\ncall run.exe\ncall runner"},
        AdaptCase{"a batch file that cannot be read stays", "[autoexec]\ncall menu.bat\ncall run ..\\x",
                  "[autoexec]\ncall menu.bat\ncall run ..\\x"}));

TEST(AdaptedConfigs, EndAndStayInTheCollection) {
    DosCollection collection;
    FolderView view;
    const QString odd = QStringLiteral("/x/.\\eXoDOS\\");
    EXPECT_EQ(adaptScriptFolderConfig("[autoexec]\nmount c .\\eXoDOS\\G", {}, odd, odd, view),
              "[autoexec]\nmount c \"/x/.\\eXoDOS\\/eXo/eXoDOS/G\"");
    for (const char *line : {"mount c .\\eXoDOS\\..\\..\\..", "@imgmount d \"/mnt/other/a.iso\" -t cdrom"})
        EXPECT_THROW(adaptScriptFolderConfig(QByteArray("[autoexec]\n") + line, {}, odd, odd, view), LaunchError)
            << line;
}

} // namespace
} // namespace ludarium::test
