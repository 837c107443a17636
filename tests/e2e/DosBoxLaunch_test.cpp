#include "Services/Dos/DosLauncher.h"

#include "GuestPrograms.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosCollection.h"
#include "support/TestHost.h"

#include <QElapsedTimer>
#include <QThread>
#include <QtEndian>
#include <csignal>

// Launches with the machine's own DOSBox. Its exit status says nothing, so the programs that it runs write down where
// they were.
namespace ludarium::test {
namespace {

// Counts turns of a loop in four ticks of the timer (220 ms) and writes the number, 32 bits, to C:\COUNT.BIN.
constexpr uchar speedProgram[] = {
    0x31, 0xc0,                                                         // xor ax,ax
    0x8e, 0xc0,                                                         // mov es,ax
    0x26, 0x8b, 0x1e, 0x6c, 0x04,                                       // mov bx,[es:46ch]  the tick count
    0x26, 0x3b, 0x1e, 0x6c, 0x04,                                       // first: cmp bx,[es:46ch]
    0x74, 0xf9,                                                         // je first
    0x26, 0x8b, 0x1e, 0x6c, 0x04,                                       // mov bx,[es:46ch]
    0x83, 0xc3, 0x04,                                                   // add bx,4
    0x31, 0xc9,                                                         // xor cx,cx
    0x31, 0xd2,                                                         // xor dx,dx
    0x83, 0xc1, 0x01,                                                   // count: add cx,1
    0x83, 0xd2, 0x00,                                                   // adc dx,0
    0x26, 0x3b, 0x1e, 0x6c, 0x04,                                       // cmp bx,[es:46ch]
    0x75, 0xf3,                                                         // jne count
    0x89, 0x0e, 0x57, 0x01,                                             // mov [number],cx
    0x89, 0x16, 0x59, 0x01,                                             // mov [number+2],dx
    0xb4, 0x3c,                                                         // mov ah,3ch        create the file
    0x31, 0xc9,                                                         // xor cx,cx
    0xba, 0x4a, 0x01,                                                   // mov dx,name
    0xcd, 0x21,                                                         // int 21h
    0x89, 0xc3,                                                         // mov bx,ax
    0xb4, 0x40,                                                         // mov ah,40h        write
    0xb9, 0x04, 0x00,                                                   // mov cx,4
    0xba, 0x57, 0x01,                                                   // mov dx,number
    0xcd, 0x21,                                                         // int 21h
    0xb4, 0x4c,                                                         // mov ah,4ch        end
    0xcd, 0x21,                                                         // int 21h
    'C',  ':',  '\\', 'C',  'O',  'U', 'N', 'T', '.', 'B', 'I', 'N', 0, // name, then number
};

class DosBoxTest : public testing::Test {
  protected:
    void SetUp() override {
        dosbox = QStringLiteral("/usr/bin/dosbox");
        if (!QFile::exists(dosbox))
            GTEST_SKIP() << "needs DOSBox at " << qPrintable(dosbox);
    }

    GameVersionOption version(const char *executable, const char *folder = nullptr, bool atGameLevel = false) const {
        GameVersionOption result;
        result.label = QStringLiteral("the version");
        result.executable = QString::fromUtf8(executable);
        result.workingDirectory = QString::fromUtf8(folder);
        result.mountAtGameLevel = atGameLevel;
        return result;
    }

    /// Launches the game and waits for DOSBox's end.
    void launch(const DosCollection &collection, std::optional<GameVersionOption> chosen = {},
                const QString &name = QStringLiteral("GAME")) {
        auto game = std::make_shared<Game>();
        game->title = QStringLiteral("A game");
        DosCollaborators others;
        others.findDOSBox = [this] { return dosbox; };
        DosLauncher launcher(host, others);
        started =
            await(launcher.launch({game, collection.game(name), collection.script(name), collection.root(), chosen}));
        QElapsedTimer timer;
        timer.start();
        while (host.host().processes.isRunning(started.process) && timer.elapsed() < 40000)
            QThread::msleep(10);
        if (host.host().processes.isRunning(started.process)) {
            ::kill(pid_t(started.process.pid), SIGKILL);
            ADD_FAILURE() << "DOSBox did not end";
        }
    }

    void run(const QString &program, const QStringList &arguments) {
        ProcessSpec spec;
        spec.program = program;
        spec.arguments = arguments;
        const ProcessResult result = await(host.host().processes.run(spec));
        ASSERT_TRUE(result.succeeded()) << qPrintable(program) << result.standardError.constData();
    }

    /// What the program wrote on the drive that the folder of all games is.
    static QByteArray where(const DosCollection &collection) {
        return DosCollection::read(parentPath(collection.game()) + QStringLiteral("/OUT.TXT"));
    }

    TestHost host;
    QString dosbox;
    DosLauncher::Started started;
};

TEST_F(DosBoxTest, RunsAVersionFromTheGamesOwnConfiguration) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"),
                   "# \x82 caf\xe9\r\n[autoexec]\r\nmount c .\r\nexit\r\n[cpu]\r\ncycles=3000\r\n");
    collection.put(QStringLiteral("vga/where.com"), bytes(whereProgram));
    launch(collection, version("WHERE one -two", "VGA"));
    EXPECT_EQ(where(collection), "C:\\GAME\\VGA| one -two");
    EXPECT_EQ(started.plan.flavour.left(7), QStringLiteral("DOSBox "));
}

TEST_F(DosBoxTest, RunsWithCAtTheGamesFolder) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("SUB/WHERE.COM"), bytes(whereProgram));
    GameVersionOption chosen = version("WHERE", "SUB", true);
    chosen.setupCommands = QStringList{QStringLiteral("copy WHERE.COM COPIED.COM")};
    launch(collection, chosen);
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/OUT.TXT")), "C:\\SUB|");
    EXPECT_TRUE(QFile::exists(collection.game() + QStringLiteral("/SUB/COPIED.COM")))
        << "setup commands run in the guest";
}

TEST_F(DosBoxTest, RunsWhatTheCollectionsScriptConfigurationStarts) {
    DosCollection collection;
    collection.put(
        collection.script() + QStringLiteral("/dosbox.conf"),
        "[autoexec]\r\ncd ..\r\ncd ..\r\nmount c .\\eXoDOS\\GAME\r\nc:\r\ncd BIN\r\n@where.com script\r\nexit\r\n");
    collection.put(QStringLiteral("BIN/WHERE.COM"), bytes(whereProgram));
    collection.put(QStringLiteral("OTHER.EXE"), "no program");
    launch(collection);
    EXPECT_EQ(where(collection), "C:\\GAME\\BIN| script");
}

TEST_F(DosBoxTest, RunsAnAdaptedConfigurationAsItStands) {
    DosCollection collection;
    collection.put(collection.script() + QStringLiteral("/dosbox.conf"),
                   "[autoexec]\r\ncd ..\r\nmount c .\\eXoDOS\\game\r\nc:\r\nif exist CD\\NUL cd CD\r\nif x==x where as "
                   "it stands\r\nexit\r\n");
    collection.put(QStringLiteral("CD/WHERE.COM"), bytes(whereProgram));
    launch(collection);
    EXPECT_TRUE(started.plan.arguments.value(3).contains(QStringLiteral("/adapted_")));
    EXPECT_TRUE(DosCollection::read(collection.game() + QStringLiteral("/OUT.TXT")).endsWith("| as it stands"));
}

TEST_F(DosBoxTest, RunsAGameWithoutAnyConfiguration) {
    DosCollection collection;
    collection.put(QStringLiteral("SUB/WHERE.COM"), bytes(whereProgram));
    launch(collection);
    EXPECT_EQ(where(collection), "C:\\GAME\\SUB|");
}

TEST_F(DosBoxTest, PassesABatchFileBy) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("PLAY.BAT"), "@echo off\r\nc:\r\ncd \\DEEP\\BIN\r\n@where /x\r\n");
    collection.put(QStringLiteral("Deep/Bin/WHERE.COM"), bytes(whereProgram));
    launch(collection, version("play.bat"));
    EXPECT_EQ(where(collection), "C:\\GAME\\DEEP\\BIN| /x");
}

TEST_F(DosBoxTest, CallsABatchFileOfASubfolder) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("Sub/PLAY.BAT"), "where from batch\r\n");
    collection.put(QStringLiteral("Sub/WHERE.COM"), bytes(whereProgram));
    launch(collection, version("call play"));
    EXPECT_EQ(where(collection), "C:\\GAME\\SUB| from batch");
}

TEST_F(DosBoxTest, RunsAProgramOfACd) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"));
    collection.put(QStringLiteral("cd/"));
    const QString disc = host.scratch() + QStringLiteral("/disc");
    collection.put(disc + QStringLiteral("/QUEST/WHERE.COM"), bytes(whereProgram));
    run(QStringLiteral("/usr/bin/genisoimage"),
        {QStringLiteral("-quiet"), QStringLiteral("-V"), QStringLiteral("QUEST"), QStringLiteral("-o"),
         collection.game() + QStringLiteral("/cd/Quest disc.iso"), disc});
    launch(collection, version("WHERE.COM", "QUEST"));
    EXPECT_EQ(where(collection), "D:\\QUEST|");
}

TEST_F(DosBoxTest, RunsAProgramOfAFloppy) {
    DosCollection collection;
    collection.put(QStringLiteral("dosbox.conf"),
                   "[autoexec]\r\nimgmount a .\\eXoDOS\\GAME\\Disk.img -t floppy\r\na:\r\n");
    collection.put(host.scratch() + QStringLiteral("/WHERE.COM"), bytes(whereProgram));
    const QString image = collection.game() + QStringLiteral("/DISK.IMG");
    run(QStringLiteral("/usr/sbin/mkfs.fat"), {QStringLiteral("-C"), image, QStringLiteral("1440")});
    run(QStringLiteral("/usr/bin/mcopy"),
        {QStringLiteral("-i"), image, host.scratch() + QStringLiteral("/WHERE.COM"), QStringLiteral("::WHERE.COM")});
    launch(collection, version("WHERE.COM floppy"));
    EXPECT_EQ(where(collection), "A:\\| floppy");
}

TEST_F(DosBoxTest, RunsFromFoldersWithOddNames) {
    for (const QString &name :
         {QString::fromUtf8("Jürgens 日本 'x' $(touch X) `y`"), QStringLiteral("50% off%PATH%;&|<>")}) {
        DosCollection collection(name);
        collection.put(QStringLiteral("dosbox.conf"));
        collection.put(QStringLiteral("WHERE.COM"), bytes(whereProgram));
        launch(collection, version("WHERE"));
        EXPECT_EQ(where(collection), "C:\\GAME|") << qPrintable(name);
    }
}

TEST_F(DosBoxTest, RunsFromTheLongestPathThatItCanMountAndRefusesALongerOne) {
    const qsizetype shortest = parentPath(DosCollection().game()).size() - 4;
    for (const qsizetype length : {238, 239}) {
        DosCollection collection(QString(length - shortest, u'a'));
        ASSERT_EQ(parentPath(collection.game()).size(), length);
        collection.put(QStringLiteral("dosbox.conf"));
        collection.put(QStringLiteral("WHERE.COM"), bytes(whereProgram));
        if (length == 238) {
            launch(collection, version("WHERE"));
            EXPECT_EQ(where(collection), "C:\\GAME|");
        } else {
            EXPECT_THROW(launch(collection, version("WHERE")), LaunchError);
        }
    }
}

TEST_F(DosBoxTest, ObeysAnOverrideOfTheSpeed) {
    const auto turns = [&](const char *cycles) {
        DosCollection collection;
        collection.put(QStringLiteral("dosbox.conf"), "[cpu]\ncore=normal\ncycles=fixed 3000\n");
        collection.put(QStringLiteral("SPEED.COM"), bytes(speedProgram));
        GameVersionOption chosen = version("SPEED");
        chosen.configChanges.insert(QStringLiteral("cycles"), QString::fromLatin1(cycles));
        launch(collection, chosen);
        const QByteArray count = DosCollection::read(parentPath(collection.game()) + QStringLiteral("/COUNT.BIN"));
        return count.size() == 4 ? qFromLittleEndian<quint32>(count.constData()) : 0;
    };
    const quint32 slow = turns("fixed 300"), fast = turns("fixed 12000");
    RecordProperty("slow", int(slow));
    RecordProperty("fast", int(fast));
    // A loop of four instructions turns 75 times a millisecond at 300 cycles.
    EXPECT_GT(slow, 5000u);
    EXPECT_LT(slow, 40000u);
    EXPECT_GT(fast, slow * 20) << "40 times the cycles";
}

} // namespace
} // namespace ludarium::test
