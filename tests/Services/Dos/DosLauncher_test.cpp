#include "Services/Dos/DosLauncher.h"

#include "DosCollection.h"
#include "Host/Settings.h"
#include "Models/LaunchCancelled.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Emulators/ProgramSandbox.h"
#include "support/TestHost.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <system_error>
#include <utime.h>

namespace ludarium::test {
namespace {

using namespace Qt::StringLiterals;

/// A collection with one game, and a DOSBox that writes down how it was called.
class DosLauncherTest : public testing::Test {
  protected:
    DosLauncherTest() {
        auto made = std::make_shared<Game>();
        made->title = QStringLiteral("A \"Game\" $(touch X)");
        game = made;
        collection.put(collection.game() + u'/');
        useDosBox("dosbox-staging, version 0.81.1");
        others.findDOSBox = [this] { return dosbox; };
        others.configOverrides = [this](const QString &) { return exceptions; };
        others.communityFix = [this](const QString &, const QString &label) {
            askedLabel = label;
            return fix;
        };
        others.scheduleLaunchFeedback = [this](const LaunchFeedback &feedback) { feedbacks.append(feedback); };
    }

    void useDosBox(const QByteArray &version) {
        dosbox = host.putProgram(QStringLiteral("/opt/dosbox"),
                                 "if [ \"$1\" = --version ]; then echo x >> \"" + count().toUtf8() + "\"; echo '" +
                                     version + "'; exit; fi\nprintf '%s\\n' \"$PWD\" \"$@\" > \"" + called().toUtf8() +
                                     ".part\"; mv \"" + called().toUtf8() + ".part\" \"" + called().toUtf8() + "\"\n");
    }
    QString called() const { return host.scratch() + QStringLiteral("/called"); }
    QString count() const { return host.scratch() + QStringLiteral("/count"); }

    DosLaunchRequest request(std::optional<GameVersionOption> version = {}) const {
        return {game, collection.game(), collection.script(), collection.root(), version};
    }
    GameVersionOption version(const char *executable, const char *folder = nullptr) const {
        GameVersionOption result;
        result.label = QStringLiteral("VGA");
        result.executable = QString::fromUtf8(executable);
        result.workingDirectory = QString::fromUtf8(folder);
        result.audioType = AudioType::none;
        return result;
    }
    LaunchPlan plan(std::optional<GameVersionOption> chosen = {}) {
        return await(DosLauncher(host, others).plan(request(chosen)));
    }
    /// Launches and waits until DOSBox has been called; its folder and arguments, one a line.
    QStringList launch(std::optional<GameVersionOption> chosen = {}) {
        QFile::remove(called());
        started = await(DosLauncher(host, others).launch(request(chosen)));
        QElapsedTimer timer;
        for (timer.start(); !QFile::exists(called()) && timer.elapsed() < 10000;)
            QThread::msleep(5);
        return QString::fromUtf8(DosCollection::read(called())).split(u'\n', Qt::SkipEmptyParts);
    }
    static QByteArray fileOf(const LaunchPlan &plan, const char *ending) {
        for (const GeneratedFile &file : plan.files)
            if (file.path.endsWith(QLatin1StringView(ending)))
                return file.content;
        return {};
    }
    static QString decision(const LaunchPlan &plan, const char *subject) {
        for (const LaunchDecision &decision : plan.decisions)
            if (decision.subject == QLatin1StringView(subject))
                return decision.choice;
        return {};
    }
    /// Paths, sizes and contents of everything below a folder.
    static QMap<QString, QByteArray> snapshot(const QString &folder) {
        QMap<QString, QByteArray> result;
        for (QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
             it.hasNext();) {
            const QString path = it.next();
            result.insert(path, QFileInfo(path).isFile() ? DosCollection::read(path) : QByteArray());
        }
        return result;
    }

    TestHost host;
    DosCollection collection;
    GamePtr game;
    std::optional<QString> dosbox;
    QMap<QString, QString> exceptions;
    std::optional<CommunityFix> fix;
    QString askedLabel;
    QList<LaunchFeedback> feedbacks;
    DosCollaborators others;
    DosLauncher::Started started;
};

TEST_F(DosLauncherTest, StartsTheVersionWithItsOverrides) {
    collection.put(QStringLiteral("DOSBOX.CONF"), "[cpu]\ncycles=fixed 3000\n[autoexec]\nold\n");
    collection.put(QStringLiteral("vga/GAME.EXE"));
    exceptions = {{QStringLiteral("machine"), QStringLiteral("ega")},
                  {QStringLiteral("sbtype"), QStringLiteral("none")}};
    GameVersionOption chosen = version("game.exe", "VGA");
    chosen.configChanges.insert(QStringLiteral("sbtype"), QStringLiteral("sb16"));
    const QString folder = host.host().paths.temporaryDirectory() + QStringLiteral("/Ludarium/");
    EXPECT_EQ(launch(chosen), (QStringList{collection.game() + QStringLiteral("/vga"), QStringLiteral("-conf"),
                                           folder + QStringLiteral("overlay.conf"), QStringLiteral("-conf"),
                                           folder + QStringLiteral("GAME_launch.conf"), QStringLiteral("-set"),
                                           QStringLiteral("cpu cycles=fixed 3000"), QStringLiteral("-set"),
                                           QStringLiteral("dosbox machine=ega"), QStringLiteral("-set"),
                                           QStringLiteral("sblaster sbtype=sb16")}));
    EXPECT_TRUE(DosCollection::read(folder + QStringLiteral("overlay.conf")).contains("[sblaster]\nsbtype = sb16\n"));
    EXPECT_EQ(
        collection.portable(DosCollection::read(folder + QStringLiteral("GAME_launch.conf"))),
        "[cpu]\ncycles=fixed 3000\n\n[autoexec]\nMOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME/VGA\ncall GAME.EXE\nexit");
    EXPECT_EQ(started.plan.flavour, QStringLiteral("DOSBox Staging 0.81.1"));
    EXPECT_GT(started.process.pid, 0);
    EXPECT_TRUE(feedbacks.isEmpty()) << "the version named its program";
    EXPECT_TRUE(host.log().contains(QStringLiteral("✅ DOSBox launched successfully (PID: ")));
}

TEST_F(DosLauncherTest, PlansWhatItLaunchesAndChangesNothing) {
    collection.put(QStringLiteral("dosbox.conf"), "[autoexec]\nold\n");
    collection.put(QStringLiteral("STALE.EXE"), "this would be taken");
    collection.put(QStringLiteral("MT32/QUEST.EXE"), QByteArray(50, 'x'));
    collection.put(QStringLiteral("OTHER.COM"));
    GameVersionOption chosen = version(nullptr);
    chosen.audioType = AudioType::mt32;
    chosen.setupCommands = QStringList{QStringLiteral("del stale.exe")};
    const auto before = snapshot(collection.root());
    const LaunchPlan planned = plan(chosen);
    EXPECT_EQ(snapshot(collection.root()), before);
    EXPECT_FALSE(QFile::exists(host.host().paths.temporaryDirectory() + QStringLiteral("/Ludarium/overlay.conf")));
    EXPECT_EQ(planned.preparations,
              (QStringList{QStringLiteral("Remove STALE.EXE"), QStringLiteral("Copy MT32/QUEST.EXE over QUEST.EXE")}));
    EXPECT_EQ(decision(planned, "executable"), QStringLiteral("QUEST.EXE")) << "of the folder as it will be";
    launch(chosen);
    EXPECT_FALSE(QFile::exists(collection.game() + QStringLiteral("/STALE.EXE")));
    EXPECT_EQ(started.plan.arguments, planned.arguments);
    ASSERT_EQ(started.plan.files.size(), planned.files.size());
    for (qsizetype i = 0; i < planned.files.size(); ++i) {
        EXPECT_EQ(started.plan.files[i].content, planned.files[i].content);
        EXPECT_EQ(DosCollection::read(started.plan.files[i].path), planned.files[i].content);
    }
}

TEST_F(DosLauncherTest, TakesTheFirstConfigurationThatThereIs) {
    struct Case {
        QStringList files;
        const char *configuration;
        const char *route;
    };
    const QString script = collection.script() + QStringLiteral("/dosbox.conf");
    const Case cases[] = {
        {{QStringLiteral("game.conf")}, "game.conf", "DOSBox, directly"},
        {{QStringLiteral("launch.conf"), QStringLiteral("DosBox.Conf")}, "launch.conf", "DOSBox, directly"},
        {{QStringLiteral("DosBox.Conf")}, "DosBox.Conf", "DOSBox, directly"},
        {{QStringLiteral("game.conf"), script}, "game.conf", "DOSBox, directly"},
        {{script, QStringLiteral("VGA/dosbox.conf")}, "adapted_", "DOSBox, directly"},
        {{QStringLiteral("VGA/dosbox.conf")},
         "VGA/dosbox.conf",
         "DOSBox, directly, without a configuration of the game's own"},
        {{QStringLiteral("VGA/x")}, "VGA_minimal.conf", "DOSBox, directly, without a configuration of the game's own"},
        {{QStringLiteral("x")}, "GAME_minimal.conf", "DOSBox, directly, without a configuration of the game's own"},
    };
    for (const Case &c : cases) {
        QDir(collection.root()).removeRecursively();
        for (const QString &file : c.files)
            collection.put(file, "[cpu]\ncycles=4\n");
        const LaunchPlan made = plan(version("G.EXE", "VGA"));
        EXPECT_TRUE(decision(made, "configuration").contains(QLatin1StringView(c.configuration))) << c.configuration;
        EXPECT_EQ(made.route, QLatin1StringView(c.route)) << c.configuration;
    }
}

TEST_F(DosLauncherTest, MountsAVersionFolderOfItsOwnConfigurationBelowItsGame) {
    collection.put(QStringLiteral("VGA/dosbox.conf"), "[cpu]\ncore=auto\n");
    collection.put(QStringLiteral("VGA/G.EXE"));
    const LaunchPlan made = plan(version("G.EXE", "VGA"));
    EXPECT_EQ(collection.portable(fileOf(made, "/VGA_launch.conf")),
              "[cpu]\ncore=auto\n\n[autoexec]\nMOUNT C: \"{C}/eXo/eXoDOS\"\nC:\ncd GAME/VGA\ncall G.EXE\nexit");
    EXPECT_EQ(made.workingDirectory, collection.game() + QStringLiteral("/VGA"));
}

TEST_F(DosLauncherTest, FindsTheProgramThatNoVersionNames) {
    struct Case {
        const char *name;
        QStringList files;
        std::optional<GameVersionOption> chosen;
        const char *script; ///< autoexec of the script folder's configuration, null without one
        const char *folder; ///< of the process, below the game's
        const char *end;    ///< of the launch configuration
    };
    const QString conf = QStringLiteral("dosbox.conf");
    const auto text = [](const char *t) { return QString::fromLatin1(t); };
    const Case cases[] = {
        {"by looking", {conf, text("BIN/QUEST.EXE")}, {}, nullptr, "/BIN", "cd GAME/BIN\ncall QUEST.EXE\nexit"},
        {"an invalid database value",
         {conf, text("QUEST.EXE")},
         version("imgmount d x.iso"),
         nullptr,
         "",
         "cd GAME\ncall QUEST.EXE\nexit"},
        {"the version's folder",
         {conf, text("CGA/A.EXE"), text("VGA/A.EXE")},
         version(nullptr, "VGA"),
         nullptr,
         "/VGA",
         "cd GAME/VGA\ncall A.EXE\nexit"},
        {"a subfolder of the version's folder",
         {conf, text("VGA/BIN/A.EXE")},
         version(nullptr, "VGA"),
         nullptr,
         "/VGA/BIN",
         "cd GAME/VGA/BIN\ncall A.EXE\nexit"},
        {"the collection's configuration",
         {text("BIN/quest.exe"), text("z.exe")},
         {},
         "mount c .\\eXoDOS\\GAME\nc:\ncd BIN\nQUEST -x\nexit",
         "/BIN",
         "cd GAME/BIN\ncall quest.exe -x\nexit"},
        {"a menu of a version without its folder",
         {text("z.exe")},
         version(nullptr, "VGA"),
         "runmenu.bat",
         "",
         "cd GAME\ncall z.exe\nexit"},
    };
    for (const Case &c : cases) {
        QDir(collection.root()).removeRecursively();
        feedbacks.clear();
        for (const QString &file : c.files)
            collection.put(file);
        if (c.script)
            collection.put(collection.script() + QStringLiteral("/dosbox.conf"), QByteArray("[autoexec]\n") + c.script);
        launch(c.chosen);
        EXPECT_EQ(started.plan.workingDirectory, collection.game() + QLatin1StringView(c.folder)) << c.name;
        const QByteArray config = fileOf(started.plan, "/GAME_launch.conf");
        EXPECT_TRUE(config.endsWith(c.end)) << c.name << "\n" << config.constData();
        ASSERT_EQ(feedbacks.size(), 1) << c.name;
        EXPECT_FALSE(feedbacks[0].isFromDatabase);
        EXPECT_EQ(feedbacks[0].versionLabel, c.chosen ? QStringLiteral("VGA") : QString()) << c.name;
    }
}

TEST_F(DosLauncherTest, RunsTheGamesConfigurationAsItStandsWithoutAProgram) {
    collection.put(QStringLiteral("game.conf"), "[autoexec]\nboot x.img\n");
    collection.put(QStringLiteral("x.img"));
    launch();
    EXPECT_EQ(started.plan.arguments.value(3), collection.game() + QStringLiteral("/game.conf"));
    EXPECT_TRUE(feedbacks.isEmpty());
}

TEST_F(DosLauncherTest, PutsACommunityFixInThePlaceOfTheVersion) {
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("FIXED.EXE"));
    collection.put(QStringLiteral("VGA/GAME.EXE"));
    fix = CommunityFix{};
    fix->versionLabel = QStringLiteral("VGA");
    fix->correctExecutable = QStringLiteral("fixed");
    fix->configChanges = QMap<QString, QString>{{QStringLiteral("cycles"), QStringLiteral("max")}};
    GameVersionOption chosen = version("GAME.EXE", "VGA");
    chosen.configChanges.insert(QStringLiteral("sbtype"), QStringLiteral("sb16"));
    const LaunchPlan made = plan(chosen);
    EXPECT_EQ(askedLabel, QStringLiteral("VGA"));
    EXPECT_TRUE(fileOf(made, "/GAME_launch.conf").endsWith("cd GAME\ncall FIXED.EXE\nexit"));
    EXPECT_EQ(made.workingDirectory, collection.game());
    EXPECT_EQ(made.arguments.mid(4), (QStringList{QStringLiteral("-set"), QStringLiteral("cpu cycles=max")}));
    EXPECT_FALSE(fileOf(made, "/overlay.conf").contains("sb16")) << "the version's settings go with it";
    EXPECT_TRUE(
        host.log().contains(QStringLiteral("✅ Applying community fix for 'A \"Game\" $(touch X)' version 'VGA'")));
}

TEST_F(DosLauncherTest, GivesAPlainDosBoxItsOverridesInAFile) {
    useDosBox("DOSBox version 0.74-3, copyright 2002-2019 DOSBox Team.");
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("G.EXE"));
    exceptions = {{QStringLiteral("cycles"), QStringLiteral("max")}};
    const QStringList arguments = launch().mid(1);
    ASSERT_EQ(arguments.size(), 6);
    EXPECT_EQ(arguments[4], QStringLiteral("-conf"));
    EXPECT_EQ(DosCollection::read(arguments[5]), "[cpu]\ncycles=max\n\n");
}

TEST_F(DosLauncherTest, AsksABuildForItsVersionOnce) {
    collection.put(QStringLiteral("dosbox.conf"));
    DosLauncher launcher(host, others);
    await(launcher.plan(request()));
    await(launcher.plan(request()));
    EXPECT_EQ(DosCollection::read(count()), "x\n");
    const utimbuf earlier{1000, 1000};
    ASSERT_EQ(utime(QFile::encodeName(*dosbox).constData(), &earlier), 0);
    await(launcher.plan(request()));
    EXPECT_EQ(DosCollection::read(count()), "x\nx\n") << "another build may stand at the same path";
}

TEST_F(DosLauncherTest, RefusesBeforeAnythingIsChanged) {
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("A.CFG"));
    GameVersionOption hostile = version("GAME.EXE\nformat c:");
    hostile.setupCommands = QStringList{QStringLiteral("del A.CFG")};
    try {
        await(DosLauncher(host, others).launch(request(hostile)));
        FAIL() << "it launched";
    } catch (const LaunchError &error) {
        EXPECT_TRUE(error.text().startsWith(QStringLiteral("Failed to launch: "))) << error.what();
    }
    EXPECT_TRUE(QFile::exists(collection.game() + QStringLiteral("/A.CFG")));
    EXPECT_FALSE(QFile::exists(called()));
}

TEST_F(DosLauncherTest, PassesByWhatIsNoConfigurationAndNamesOneThatCannotBeRead) {
    collection.put(QStringLiteral("dosbox.conf/"));
    ASSERT_EQ(mkfifo(QFile::encodeName(collection.game() + QStringLiteral("/launch.conf")).constData(), 0600), 0);
    const QString large = collection.put(QStringLiteral("game.conf"));
    EXPECT_EQ(decision(plan(), "configuration"), large);
    ASSERT_TRUE(QFile::resize(large, 17 * 1024 * 1024));
    try {
        plan();
        FAIL() << "it planned";
    } catch (const std::system_error &error) {
        EXPECT_EQ(error.code().value(), EFBIG);
        EXPECT_TRUE(QString::fromUtf8(error.what()).contains(large)) << error.what();
    }
}

TEST_F(DosLauncherTest, NamesWhatIsMissing) {
    collection.put(QStringLiteral("dosbox.conf"));
    dosbox.reset();
    try {
        plan();
        FAIL() << "it planned";
    } catch (const LaunchError &error) {
        EXPECT_EQ(error.text(),
                  QStringLiteral("DOSBox Staging not found. Please install DOSBox Staging to run this game."));
    }
    dosbox = host.put(QStringLiteral("/opt/no-program"), "not executable");
    collection.put(QStringLiteral("G.EXE"));
    try {
        await(DosLauncher(host, others).launch(request()));
        FAIL() << "it started";
    } catch (const ProcessError &error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), *dosbox + u": Permission denied"_s);
    }
}

TEST_F(DosLauncherTest, AsksBeforeAnEmptyPromptOpens) {
    useDosBox("DOSBox version 0.74-3");
    collection.put(u"dosbox.conf"_s, "[autoexec]\nmount c .\nc:\ncd SUB\nlost.exe\nexit\n");
    collection.put(u"SUB/lost.txt"_s);
    collection.put(u"A.CFG"_s);
    GameVersionOption chosen = version("LOST.EXE", "SUB");
    chosen.setupCommands = QStringList{u"del A.CFG"_s};
    const auto before = snapshot(collection.root());
    EXPECT_THROW(await(DosLauncher(host, others).launch(request(chosen))), LaunchCancelled);
    ASSERT_EQ(host.dialogs.asked.size(), 1);
    EXPECT_EQ(host.dialogs.asked[0].title, u"LOST.EXE is not in C:\\GAME\\SUB"_s);
    EXPECT_EQ(host.dialogs.asked[0].buttons.last(), u"Cancel"_s);
    EXPECT_EQ(snapshot(collection.root()), before) << "nothing is prepared before the answer";
    EXPECT_FALSE(QFile::exists(called()));
    host.dialogs.answers = {u"Start Anyway"_s};
    EXPECT_FALSE(launch(chosen).isEmpty());
    EXPECT_EQ(plan(chosen).proof.verdict, LaunchProof::Verdict::missing);
}

TEST_F(DosLauncherTest, LeavesTheToldWayOnlyWhenItLeadsNowhere) {
    useDosBox("DOSBox version 0.74-3");
    const QString script = collection.script() + u"/dosbox.conf"_s;
    struct Case {
        const char *name;
        const char *autoexec;
        QStringList files;
        const char *launchFile; ///< what its name ends with
        const char *program;    ///< as the proof names it
        LaunchProof::Verdict verdict;
    };
    using Verdict = LaunchProof::Verdict;
    const Case cases[] = {
        {"the program is where it is told",
         "mount c .\\eXoDOS\\GAME\nc:\ngame\n",
         {u"GAME.EXE"_s},
         "/GAME_launch.conf",
         "C:\\GAME\\GAME.EXE",
         Verdict::found},
        {"only the adapted configuration mounts its drive",
         "mount e .\\eXoDOS\\GAME\\A\ne:\ncd b\ncall go\n",
         {u"A/B/GO.BAT=@cd c\n@play\n"_s, u"A/B/C/PLAY.EXE"_s},
         nullptr,
         "E:\\B\\C\\PLAY.EXE",
         Verdict::found},
        {"what a menu starts is not known",
         "mount c .\\eXoDOS\\GAME\nc:\ncall go\n",
         {u"GO.BAT=choice /c:12\nif errorlevel 2 goto b\nx\n:b\ny\n"_s},
         "/GAME_launch.conf",
         "errorlevel 2 goto b",
         Verdict::unknown},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QDir(collection.root()).removeRecursively();
        for (const QString &file : c.files)
            collection.put(file.section(u'=', 0, 0), file.contains(u'=') ? file.section(u'=', 1).toUtf8() : "x");
        collection.put(script, QByteArray("[autoexec]\n") + c.autoexec);
        const LaunchPlan made = plan();
        EXPECT_EQ(made.proof.verdict, c.verdict) << qPrintable(made.proof.detail);
        EXPECT_EQ(made.proof.program, QString::fromUtf8(c.program));
        EXPECT_TRUE(c.launchFile ? made.arguments.value(3).endsWith(QLatin1StringView(c.launchFile))
                                 : made.arguments.value(3).contains(u"/adapted_"_s))
            << qPrintable(made.arguments.value(3));
    }
}

/// How unshare is told to make a mount namespace here; empty where none may be made.
QString hidingOptions() {
    const auto works = [](const QStringList &options) {
        return QProcess::execute(u"/usr/bin/unshare"_s, options + QStringList{u"true"_s}) == 0;
    };
    if (works({u"-rm"_s}))
        return u"-rm"_s;
    // In a changed root nothing can be made private; nothing has to be where no mount is shared.
    QFile mounts(u"/proc/self/mountinfo"_s);
    const bool shared = !mounts.open(QIODevice::ReadOnly) || mounts.readAll().contains(" shared:");
    const QStringList asItIs{u"-m"_s, u"--propagation"_s, u"unchanged"_s};
    return !shared && works(asItIs) ? asItIs.join(u' ') : QString();
}

// A Flatpak has a "/tmp" of its own: a DOSBox in it passes over a configuration there and takes the user's own.
TEST_F(DosLauncherTest, GivesASandboxedDosBoxFilesThatItSees) {
    const QString hiding = hidingOptions();
    if (hiding.isEmpty())
        GTEST_SKIP() << "needs the right to make a mount namespace";
    const QString temporary = host.host().paths.temporaryDirectory();
    ASSERT_TRUE(temporary.startsWith(host.root() + u"/tmp/"_s));
    const QByteArray report = called().toUtf8();
    dosbox = host.putProgram(u"/var/lib/flatpak/exports/bin/io.github.dosbox-staging"_s,
                             "[ \"$1\" = --version ] && { echo 'dosbox-staging, version 0.81.1'; exit; }\n"
                             "[ -n \"$HIDDEN\" ] || HIDDEN=1 exec unshare " +
                                 hiding.toUtf8() +
                                 " \"$0\" \"$@\"\n"
                                 "mount -t tmpfs none '" +
                                 host.root().toUtf8() +
                                 "/tmp'\n"
                                 "for file; do [ \"$file\" = -conf ] || cat \"$file\"; done > '" +
                                 report + ".part' 2>&1\nmv '" + report + ".part' '" + report + "'\n");
    collection.put(u"dosbox.conf"_s);
    collection.put(u"GAME.EXE"_s);
    const auto permit = [&](const QString &folders) {
        host.putProgram(u"/usr/bin/flatpak"_s,
                        "[ \"$*\" = 'info --show-permissions io.github.dosbox-staging' ] && echo '[Context]\n"
                        "filesystems=" +
                            folders.toUtf8() + "'\n");
    };
    permit(u"home;xdg-download:ro;"_s);
    try {
        launch();
        FAIL() << "it started without its games";
    } catch (const LaunchError &error) {
        EXPECT_TRUE(error.text().contains(u"flatpak override --user --filesystem=\""_s + collection.root()))
            << error.what();
    }
    permit(u"!host;"_s + collection.root() + u":rw;"_s);
    const QByteArray read = launch().join(u'\n').toUtf8();
    EXPECT_TRUE(read.contains("# Ludarium Independent Overlay Config")) << read.constData();
    EXPECT_TRUE(read.contains("call GAME.EXE")) << read.constData();
    EXPECT_TRUE(
        started.plan.arguments.value(1).startsWith(host.home() + u"/.var/app/io.github.dosbox-staging/cache/"_s));
}

TEST(Sandboxes, SeeAPartOfTheDisk) {
    using Kind = ProgramSandbox::Kind;
    const QByteArray plugs = "Interface        Plug                      Slot              Notes\n"
                             "home             dosbox-x:home             :home             -\n"
                             "removable-media  dosbox-x:removable-media  -                 -\n";
    struct Case {
        Kind kind;
        QByteArray permissions;
        const char *folder;
        bool sees;
    };
    const Case cases[] = {
        {Kind::flatpak, "filesystems=host;\n", "/mnt/games", true},
        {Kind::flatpak, "filesystems=host:ro;\n", "/tmp/games", false},
        {Kind::flatpak, "filesystems=host;\n", "/run/media/me/disk", true},
        {Kind::flatpak, "filesystems=home;\n", "/home/me/games", true},
        {Kind::flatpak, "filesystems=home;!/mnt;\n", "/mnt/games", false},
        {Kind::flatpak, "filesystems=~/games:create;\n", "/home/me/games/x", true},
        {Kind::flatpak, "filesystems=~/games;\n", "/home/me/games2", false},
        {Kind::flatpak, "shared=network;\n", "/home/me/games", false},
        {Kind::snap, plugs, "/home/me/games", true},
        {Kind::snap, plugs, "/home/me/.games", false},
        {Kind::snap, plugs, "/media/me/disk", false},
        {Kind::snap, QByteArray(plugs).replace(" -     ", " :removable-media"), "/media/me/disk", true},
        {Kind::snap, plugs, "/srv/games", false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(sandboxSees({c.kind, u"x"_s}, c.permissions, QString::fromUtf8(c.folder), u"/home/me"_s), c.sees)
            << c.permissions.constData() << c.folder;

    TestHost machine;
    const HostPaths &paths = machine.host().paths;
    const QString snap = machine.putProgram(u"/snap/bin/dosbox-x.run"_s, "");
    const QString link = machine.scratch() + u"/mine"_s;
    ASSERT_TRUE(QFile::link(snap, link));
    EXPECT_EQ(sandboxOf(paths, link), (ProgramSandbox{Kind::snap, u"dosbox-x"_s}));
    EXPECT_EQ(sandboxOf(paths, machine.putProgram(u"/usr/bin/dosbox"_s, "")), std::nullopt);
}

TEST(DosSettingsOfAMachine, KnowWhereMt32RomsMayLie) {
    TestHost linux(HostLayout::Linux);
    linux.settings.setValue(Settings::launchFullscreen, false);
    linux.settings.setValue(Settings::disableCRTEffects, true);
    const DosSettings onLinux = DosSettings::current(linux);
    EXPECT_FALSE(onLinux.fullscreen);
    EXPECT_FALSE(onLinux.crtEffects);
    EXPECT_EQ(onLinux.mt32Folders.first(), linux.home() + QStringLiteral("/.config/dosbox-staging"));
    EXPECT_TRUE(onLinux.mt32Folders.contains(linux.root() + QStringLiteral("/usr/share/mt32-rom-data")));
    TestHost mac(HostLayout::MacOS);
    const DosSettings onMac = DosSettings::current(mac);
    EXPECT_TRUE(onMac.fullscreen);
    EXPECT_EQ(onMac.discSwapKeys, QStringLiteral("Fn+Cmd+F4"));
    const QString home = mac.home(), root = mac.root();
    EXPECT_EQ(onMac.mt32Folders,
              (QStringList{home + QStringLiteral("/Library/Application Support/DOSBox Staging/mt32-roms"),
                           home + QStringLiteral("/Library/Preferences/DOSBox"),
                           home + QStringLiteral("/.config/dosbox-staging"),
                           home + QStringLiteral("/.config/dosbox-staging/mt32-roms"),
                           home + QStringLiteral("/.config/dosbox"),
                           home + QStringLiteral("/Library/Application Support/DOSBox"),
                           root + QStringLiteral("/usr/local/share/mt32-rom-data"),
                           root + QStringLiteral("/opt/homebrew/share/mt32-rom-data")}));
}

} // namespace
} // namespace ludarium::test
