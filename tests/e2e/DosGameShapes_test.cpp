#include "Services/Dos/DosLauncher.h"

#include "GuestPrograms.h"
#include "Services/Dos/DosCollection.h"
#include "Services/Dos/GameVersionDetector.h"
#include "support/TestHost.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QThread>
#include <csignal>

// Game folders shaped like those of real sets, each played in the machine's own DOSBox. What starts writes down where
// it was started.
namespace ludarium::test {
namespace {

using namespace Qt::StringLiterals;

/// One game on disk, and what its start must come to.
class Shape {
  public:
    Shape(const QString &folder = u"GAME"_s) : folder(folder) {}
    QString game() const { return collection.game(folder); }

    /// A program that says where it was started.
    Shape &program(const QString &path) { return file(path, bytes(whereProgram)); }
    Shape &file(const QString &path, const QByteArray &content = "x") {
        collection.put(path.startsWith(u'/') ? parentPath(game()) + path : game() + u'/' + path, content);
        return *this;
    }
    /// The autoexec section of the configuration in the script folder, with "@" for the game's folder.
    Shape &script(const QByteArray &autoexec) {
        collection.put(collection.script(folder) + "/dosbox.conf"_L1,
                       "[cpu]\r\ncycles=auto\r\n[autoexec]\r\n" + named(autoexec));
        return *this;
    }
    Shape &configuration(const QByteArray &text) { return file(u"dosbox.conf"_s, named(text)); }
    Shape &version(const QString &program, const QString &workingDirectory = {}) {
        chosen = GameVersionOption();
        chosen->label = u"A version"_s;
        chosen->executable = program;
        chosen->workingDirectory = workingDirectory;
        return *this;
    }
    /// An image of `content`, a folder of the game that is no longer there afterwards.
    Shape &disc(const QString &image, const QString &content) {
        collection.put(game() + u'/' + image);
        tool(u"/usr/bin/genisoimage"_s, {u"-quiet"_s, u"-o"_s, game() + u'/' + image, game() + u'/' + content});
        QDir(game() + u'/' + content).removeRecursively();
        return *this;
    }
    /// The same disc in sectors of 2352 bytes, with its cue sheet.
    Shape &rawDisc(const QString &cue, const QString &bin, const QByteArray &binInCue, const QString &content) {
        disc(bin, content);
        const QByteArray plain = DosCollection::read(game() + u'/' + bin);
        QByteArray raw;
        for (qsizetype at = 0; at < plain.size(); at += 2048)
            raw += QByteArray(16, '\0') + plain.mid(at, 2048) + QByteArray(288, '\0');
        file(bin, raw);
        return file(cue, "FILE \"" + binInCue + "\" BINARY\r\n  TRACK 01 MODE1/2352\r\n    INDEX 01 00:00:00\r\n");
    }
    Shape &floppy(const QString &image, const QStringList &programs) {
        QFile::remove(game() + u'/' + image);
        file(image);
        QFile::remove(game() + u'/' + image);
        tool(u"/usr/sbin/mkfs.fat"_s, {u"-C"_s, game() + u'/' + image, u"1440"_s});
        for (const QString &name : programs)
            tool(u"/usr/bin/mcopy"_s, {u"-i"_s, game() + u'/' + image, guestFile(), u"::"_s + name});
        return *this;
    }
    /// A hard disk of 16 heads and 63 sectors with one partition.
    Shape &hardDisk(const QString &image, const QString &program) {
        const qint64 sectors = 20 * 16 * 63;
        QByteArray table(512, '\0');
        const char entry[] = {'\x80', 1, 1, 0, 4, 15, 63, 19, 63, 0, 0, 0};
        std::copy(std::begin(entry), std::end(entry), table.begin() + 0x1be);
        const quint32 size = quint32(sectors - 63);
        for (int i = 0; i < 4; ++i)
            table[0x1be + 12 + i] = char(size >> (8 * i));
        table[510] = 0x55;
        table[511] = char(0xaa);
        file(u"part.tmp"_s, QByteArray(qsizetype(size) * 512, '\0'));
        tool(u"/usr/sbin/mkfs.fat"_s,
             {u"-F"_s, u"16"_s, u"-h"_s, u"63"_s, u"-g"_s, u"16/63"_s, game() + "/part.tmp"_L1});
        tool(u"/usr/bin/mcopy"_s, {u"-i"_s, game() + "/part.tmp"_L1, guestFile(), u"::"_s + program});
        file(image, table + QByteArray(62 * 512, '\0') + DosCollection::read(game() + "/part.tmp"_L1));
        QFile::remove(game() + "/part.tmp"_L1);
        return *this;
    }
    Shape &expect(const QByteArray &where) {
        expected = where;
        return *this;
    }

    /// What the program wrote at the root of C:, wherever that is on the host.
    QByteArray written() const {
        for (QDirIterator it(collection.root(), {u"OUT.TXT"_s}, QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();)
            return DosCollection::read(it.next());
        return "nothing";
    }

    DosCollection collection;
    QString folder;
    std::optional<GameVersionOption> chosen;
    QByteArray expected;

  private:
    QByteArray named(QByteArray text) const { return text.replace("@G", QFile::encodeName(folder)); }
    QString guestFile() const { return collection.put(collection.root() + "/guest.com"_L1, bytes(whereProgram)); }
    static void tool(const QString &program, const QStringList &arguments) {
        QProcess process;
        process.start(program, arguments);
        ASSERT_TRUE(process.waitForFinished() && process.exitCode() == 0)
            << qPrintable(program) << process.readAllStandardError().constData();
    }
};

struct ShapeCase {
    const char *name;
    std::function<std::unique_ptr<Shape>()> make;
};

template<typename Fill>
std::unique_ptr<Shape> shape(const QString &folder, Fill fill) {
    auto made = std::make_unique<Shape>(folder);
    fill(*made);
    return made;
}

const QByteArray plainScript = "cd ..\r\ncd ..\r\nmount c .\\eXoDOS\\@G\r\nc:\r\ncls\r\ngame\r\nexit\r\n";

#define SHAPE(name, folder, ...)                                                                                       \
    {                                                                                                                  \
        name, [] { return shape(folder, [](Shape &s) { s.__VA_ARGS__; }); }                                            \
    }
const ShapeCase shapeCases[] = {
    // Names that DOS cannot spell.
    SHAPE("a long folder name", u"LongGameName"_s, script(plainScript).program(u"GAME.EXE"_s).expect("C:\\|")),
    SHAPE("a folder name with blanks", u"Two Words"_s, script(plainScript).program(u"GAME.COM"_s).expect("C:\\|")),
    SHAPE("a folder name with a percent sign", u"50%OFF"_s, script(plainScript).program(u"GAME.COM"_s).expect("C:\\|")),
    SHAPE("a folder name with an accent", u"J\u00fcrgen"_s, script(plainScript).program(u"GAME.COM"_s).expect("C:\\|")),
    SHAPE("a version's folder that DOS cannot spell", u"GAME"_s,
          script(plainScript)
              .version(u"PLAY.EXE -x"_s, u"Floppy Version"_s)
              .program(u"Floppy Version/BIN/x.txt"_s)
              .program(u"Floppy Version/PLAY.EXE"_s)
              .expect("C:\\| -x")),
    SHAPE("a program whose name is too long", u"GAME"_s,
          version(u"LongProgram.exe"_s).configuration("[cpu]\n").program(u"LongProgram.exe"_s).expect("C:\\GAME|")),
    SHAPE("a version's program in a folder with a percent sign", u"50%OFF"_s,
          configuration("[cpu]\n").version(u"PLAY"_s).program(u"PLAY.EXE"_s).expect("C:\\50%OFF|")),
    // Floppies.
    SHAPE("several floppies on a build that mounts one", u"GAME"_s,
          script("imgmount a .\\eXoDOS\\GAME\\d1.img .\\eXoDOS\\GAME\\d2.img -t floppy\r\nmount c "
                 ".\\eXoDOS\r\na:\r\nplay.com\r\nexit\r\n")
              .floppy(u"d1.img"_s, {u"PLAY.COM"_s})
              .floppy(u"d2.img"_s, {})
              .expect("A:\\|")),
    SHAPE(
        "a floppy beside a program on C:", u"GAME"_s,
        script("imgmount a .\\eXoDOS\\GAME\\d1.img -t floppy\r\nmount c .\\eXoDOS\\GAME\r\nc:\r\nplay.com\r\nexit\r\n")
            .floppy(u"d1.img"_s, {})
            .program(u"PLAY.COM"_s)
            .expect("C:\\|")),
    // What stands before the game. (This DOSBox hands a program behind "loadfix" its own name as an argument.)
    SHAPE("commands and loaders before the game", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\nipxnet startserver\r\nrescan\r\nautotype -w 1 "
                 "enter\r\nmouse.com\r\nkeyb us\r\ncycles=max\r\nloadfix play.exe\r\nexit\r\n")
              .file(u"MOUSE.COM"_s, bytes(whereProgram).left(0) + "\xcd\x20")
              .program(u"PLAY.EXE"_s)
              .expect("C:\\GAME| PLAY.EXE ")),
    SHAPE("a loader of the game's own that a batch file calls", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\ncall mouse\r\nlh play now\r\nexit\r\n")
              .file(u"MOUSE.COM"_s, "\xcd\x20")
              .program(u"PLAY.COM"_s)
              .expect("C:\\GAME| now")),
    SHAPE("a program whose name begins like a command", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\nsettlers /s\r\nexit\r\n")
              .program(u"SETTLERS.EXE"_s)
              .program(u"A.EXE"_s)
              .expect("C:\\GAME| /s")),
    SHAPE("another such program", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\nforgot.exe\r\nexit\r\n")
              .program(u"FORGOT.EXE"_s)
              .file(u"BIG.EXE"_s, QByteArray(3000, 'x'))
              .expect("C:\\GAME|")),
    // Batch files.
    SHAPE("a batch file that tidies up behind the game", u"GAME"_s,
          configuration("[cpu]\r\n")
              .version(u"PLAY.BAT"_s)
              .file(u"PLAY.BAT"_s, "@echo off\r\ncd \\SUB\r\n:again\r\nGAME.EXE one\r\ncls\r\nset x=\r\necho.\r\ncd "
                                   "..\r\npause\r\n:end\r\nexit\r\n")
              .program(u"SUB/GAME.EXE"_s)
              .expect("C:\\GAME\\SUB| one")),
    SHAPE("a batch file whose last program is elsewhere", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\ncall play.bat\r\nexit\r\n")
              .file(u"PLAY.BAT"_s, "cd \\SUB\r\nGAME.EXE\r\ncd \\\r\nOTHER.EXE\r\n")
              .program(u"SUB/GAME.EXE"_s)
              .expect("C:\\SUB|")),
    SHAPE("batch files that call each other", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\ncall go.bat fast\r\nexit\r\n")
              .file(u"GO.BAT"_s, "@if not exist bin\\game.com goto end\r\n@call bin\\next %1\r\n:end\r\n")
              .file(u"BIN/NEXT.BAT"_s, "cd bin\r\ngame %1\r\n")
              .program(u"BIN/GAME.COM"_s)
              .expect("C:\\GAME\\BIN| fast")),
    // Discs.
    SHAPE("a game called Disc in the same set", u"GAME"_s,
          script(plainScript).file(u"/Disc/1.iso"_s).file(u"/Disc/2.iso"_s).program(u"GAME.EXE"_s).expect("C:\\GAME|")),
    SHAPE(
        "a CD image in the game's root with the program on it", u"GAME"_s,
        script(
            "mount c .\\eXoDOS\\GAME\r\nimgmount d .\\eXoDOS\\GAME\\a.iso -t cdrom\r\nd:\r\ncd bin\r\nplay\r\nexit\r\n")
            .program(u"disc/BIN/PLAY.EXE"_s)
            .disc(u"a.iso"_s, u"disc"_s)
            .expect("D:\\BIN|")),
    SHAPE("a CD image that the guest's own path names", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\nimgmount d c:\\iso\\a.iso -t iso\r\nd:\r\nplay\r\nexit\r\n")
              .program(u"disc/PLAY.EXE"_s)
              .file(u"ISO/x"_s)
              .disc(u"ISO/a.iso"_s, u"disc"_s)
              .expect("D:\\|")),
    SHAPE("a cue sheet that spells its file otherwise", u"GAME"_s,
          configuration("[cpu]\r\n")
              .version(u"PLAY.EXE"_s)
              .program(u"disc/PLAY.EXE"_s)
              .file(u"cd/x"_s)
              .rawDisc(u"cd/Game.cue"_s, u"cd/game.bin"_s, "GAME.BIN", u"disc"_s)
              .expect("D:\\|")),
    SHAPE("such a sheet in the collection's configuration", u"GAME"_s,
          script(
              "mount c .\\eXoDOS\\GAME\r\nimgmount d .\\eXoDOS\\GAME\\iso\\Game.cue -t cdrom\r\nd:\r\nplay\r\nexit\r\n")
              .program(u"disc/PLAY.EXE"_s)
              .file(u"iso/x"_s)
              .rawDisc(u"iso/Game.cue"_s, u"iso/game.bin"_s, "C:\\cds\\Game.Bin", u"disc"_s)
              .expect("D:\\|")),
    SHAPE("a hard disk image", u"GAME"_s,
          script("mount d .\\eXoDOS\\GAME\r\nimgmount e .\\eXoDOS\\GAME\\hd.img -t hdd -size 512,63,16,20\r\nmount c "
                 ".\\eXoDOS\\GAME\r\ne:\r\nplay\r\nexit\r\n")
              .hardDisk(u"hd.img"_s, u"PLAY.COM"_s)
              .expect("E:\\|")),
    // Folders.
    SHAPE("a subfolder that becomes C:", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\\DRIVE\r\nc:\r\ncd \\games\\quest\r\nplay\r\nexit\r\n")
              .program(u"DRIVE/GAMES/QUEST/PLAY.EXE"_s)
              .expect("C:\\GAMES\\QUEST|")),
    SHAPE("a data folder with the program's name", u"DOOM"_s,
          script("mount c .\\eXoDOS\\DOOM\r\nc:\r\ndoom\r\nexit\r\n")
              .program(u"DOOM.EXE"_s)
              .file(u"DOOM/data.wad"_s)
              .expect("C:\\|")),
    SHAPE("a folder that is entered twice", u"GAME"_s,
          script("mount c .\\eXoDOS\r\nc:\r\ncd game\r\ncd sub\r\ncd sub\r\nplay\r\nexit\r\n")
              .program(u"SUB/PLAY.EXE"_s)
              .expect("C:\\GAME\\SUB|")),
    SHAPE("a program deep below", u"GAME"_s,
          version(u"play.exe /q"_s)
              .configuration("[cpu]\r\n")
              .program(u"A/B/C/PLAY.EXE"_s)
              .expect("C:\\GAME\\A\\B\\C| /q")),
    SHAPE("a version's program with its folder", u"GAME"_s,
          version(u"bin\\play.exe"_s).configuration("[cpu]\r\n").program(u"Bin/Play.exe"_s).expect("C:\\GAME|")),
    SHAPE("a program that the search path finds", u"GAME"_s,
          script("mount c .\\eXoDOS\\GAME\r\nc:\r\npath=c:\\tools\\bin;z:\\\r\ncd data\r\nplay\r\nexit\r\n")
              .program(u"TOOLS/BIN/PLAY.EXE"_s)
              .file(u"DATA/x"_s)
              .expect("C:\\DATA|")),
    // Configurations.
    SHAPE("the section's name in a comment", u"GAME"_s,
          configuration("# your own lines go below [autoexec]\r\n[autoexec]\r\nmount c /nowhere\r\nd:\r\nexit\r\n")
              .program(u"PLAY.EXE"_s)
              .expect("C:\\GAME|")),
    SHAPE("two autoexec sections", u"GAME"_s,
          configuration("[autoexec]\r\nmount c .\r\n[cpu]\r\ncycles=auto\r\n[autoexec]\r\nexit\r\n")
              .program(u"PLAY.EXE"_s)
              .expect("C:\\GAME|")),
    SHAPE("a configuration in the game's folder that is written for Windows", u"GAME"_s,
          configuration("[autoexec]\r\nmount c .\\eXoDOS\\game\\hdd\r\nc:\r\ncd a\r\ncd b\r\ncd c\r\nif exist "
                        "setup.cfg goto play\r\n:play\r\nstart1\r\nexit\r\n")
              .file(u"SETUP.EXE"_s)
              .program(u"HDD/A/B/C/START1.EXE"_s)
              .expect("C:\\A\\B\\C|")),
    SHAPE("lower case and Unix lines", u"game"_s,
          script("mount c \".\\eXoDOS\\game\" -freesize 200\nc:\ncd bin\n@play.com -a -b\nexit\n")
              .program(u"bin/play.com"_s)
              .expect("C:\\GAME\\BIN| -a -b")),
    SHAPE(
        "a jump in the section", u"GAME"_s,
        script(
            "mount c .\\eXoDOS\\GAME\r\nc:\r\ngoto go\r\nother.exe\r\n:go\r\ncd one\r\ncd two\r\nplay.exe\r\nexit\r\n")
            .program(u"ONE/TWO/PLAY.EXE"_s)
            .expect("C:\\ONE\\TWO|")),
};
#undef SHAPE

TEST(DosGameShapes, AllStart) {
    const QString dosbox = u"/usr/bin/dosbox"_s;
    if (!QFile::exists(dosbox))
        GTEST_SKIP() << "needs DOSBox at " << qPrintable(dosbox);
    // As many at once as a small machine can do without holding any of them up.
    constexpr int atOnce = 4;
    struct Run {
        const ShapeCase *shapeCase;
        std::unique_ptr<Shape> shape;
        TestHost *host;
        std::unique_ptr<DosLauncher> launcher;
        DosLauncher::Started started;
        QElapsedTimer timer;
    };
    // One for each, since launches of one program share their files; taken down in turn, as each has put its log before
    // that of the former one.
    struct Hosts : std::vector<std::unique_ptr<TestHost>> {
        ~Hosts() {
            while (!empty())
                pop_back();
        }
    } hosts;
    std::vector<Run> running;
    const auto finish = [](Run &run) {
        SCOPED_TRACE(run.shapeCase->name);
        const bool hangs = run.host->host().processes.isRunning(run.started.process);
        if (hangs)
            ::kill(pid_t(run.started.process.pid), SIGKILL);
        EXPECT_FALSE(hangs) << "DOSBox did not end";
        EXPECT_EQ(run.shape->written().toStdString(), run.shape->expected.toStdString());
        EXPECT_NE(int(run.started.plan.proof.verdict), int(LaunchProof::Verdict::missing))
            << qPrintable(run.started.plan.proof.program) << " " << qPrintable(run.started.plan.proof.detail);
        if (run.shape->written() != run.shape->expected && qEnvironmentVariableIsSet("SHOW_PLANS"))
            for (const GeneratedFile &file : run.started.plan.files)
                std::fprintf(stderr, "--- %s\n%s\n", qPrintable(file.path), file.content.constData());
    };
    const auto wait = [&](size_t most) {
        while (running.size() > most) {
            QThread::msleep(5);
            for (auto run = running.begin(); run != running.end();) {
                if (run->host->host().processes.isRunning(run->started.process) && run->timer.elapsed() < 20000) {
                    ++run;
                    continue;
                }
                finish(*run);
                run = running.erase(run);
            }
        }
    };
    for (const ShapeCase &shapeCase : shapeCases) {
        SCOPED_TRACE(shapeCase.name);
        wait(atOnce - 1);
        hosts.push_back(std::make_unique<TestHost>());
        hosts.back()->dialogs.answers = {u"Start Anyway"_s}; // told by the proof below
        Run run{&shapeCase, shapeCase.make(), hosts.back().get(), nullptr, {}, {}};
        auto game = std::make_shared<Game>();
        game->title = QString::fromUtf8(shapeCase.name);
        DosCollaborators others;
        others.findDOSBox = [&dosbox] { return dosbox; };
        run.launcher = std::make_unique<DosLauncher>(run.host->host(), others);
        const Shape &made = *run.shape;
        run.started = await(run.launcher->launch(
            {game, made.game(), made.collection.script(made.folder), made.collection.root(), made.chosen}));
        run.timer.start();
        running.push_back(std::move(run));
    }
    wait(0);
}

} // namespace
} // namespace ludarium::test
