#include "Services/Dos/FolderPreparation.h"

#include "DosCollection.h"

#include <QDirIterator>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ludarium::test {
namespace {

using namespace Qt::StringLiterals;

GameVersionOption withAudio(std::optional<AudioType> audio) {
    GameVersionOption version;
    version.audioType = audio;
    return version;
}

FolderPreparation prepared(const DosCollection &collection, const std::optional<GameVersionOption> &version,
                           const QString &folder) {
    FolderPreparation preparation{collection.game(), {}};
    FolderView view = sortedView();
    executeSetupDeleteCommands(preparation, view, folder, version);
    copyAudioDriverFiles(preparation, view, folder, version);
    return preparation;
}

TEST(AudioDrivers, AreChosenByTheVersionsHardware) {
    struct Case {
        std::optional<AudioType> audio;
        const char *folders;
        const char *source; ///< empty for none
    };
    const Case cases[] = {
        {AudioType::mt32, "mt32 SB16", "mt32"},
        {AudioType::soundBlaster, "sc55 SB", "SB"},
        {AudioType::soundBlaster, "sc55 ADLIB", "sc55"},
        {AudioType::soundCanvas, "SOUNDCANVAS SB16", "SOUNDCANVAS"},
        {AudioType::cdAudio, "CDAUDIO cda", "cda"},
        {AudioType::adlib, "adl", "adl"},
        {AudioType::tandy, "Tandy", "Tandy"},
        {AudioType::gameBlaster, "GAMEBLASTER gb", "gb"},
        {AudioType::gus, "GUS SB16", ""},
        {std::nullopt, "SB16 MT32", "SB16"},
        {AudioType::mt32, "CD1/MT32 Discs/MT32 Floppy/MT32 VGA/MT32", "VGA/MT32"},
    };
    for (const Case &c : cases) {
        DosCollection collection;
        for (const QString &folder : QString::fromLatin1(c.folders).split(u' '))
            collection.put(folder + QStringLiteral("/A.DRV"));
        const FolderPreparation preparation = prepared(collection, withAudio(c.audio), collection.game());
        ASSERT_EQ(preparation.steps.size(), qstrlen(c.source) ? 1 : 0) << c.folders;
        if (!preparation.isEmpty()) {
            EXPECT_EQ(preparation.steps[0].source,
                      collection.game() + u'/' + QString::fromLatin1(c.source) + QStringLiteral("/A.DRV"));
        }
    }
}

/// Paths and contents of every file below a folder.
QMap<QString, QByteArray> contents(const QString &folder) {
    QMap<QString, QByteArray> result;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); it.hasNext();) {
        const QString path = it.next();
        result.insert(path.mid(folder.size() + 1), DosCollection::read(path));
    }
    return result;
}

TEST(AudioDrivers, AreMergedWithTheGamesOwnFilesAndKeepWhatDiffers) {
    DosCollection collection;
    const QMap<QString, QByteArray> drivers{{u"MT32/SOUND.DRV"_s, "new driver"},
                                            {u"MT32/DRV/song.mid"_s, "new song"},
                                            {u"MT32/FRESH.CFG"_s, "fresh"},
                                            {u"SB16/OTHER.DRV"_s, "of the other card"},
                                            {u"MT32/OTHER.DRV"_s, "of this card"}};
    for (auto it = drivers.cbegin(); it != drivers.cend(); ++it)
        collection.put(it.key(), it.value());
    collection.put(u"sound.drv"_s, "old");
    collection.put(u"OTHER.DRV"_s, "of the other card");
    collection.put(u"DRV/GAME.SAV"_s, "a saved game");
    collection.put(u"DRV/SONG.MID"_s, "old song");
    collection.put(u"DRV/.ludarium-0123456789ab.new"_s, "half a");
    const FolderPreparation preparation = prepared(collection, withAudio(AudioType::mt32), collection.game());
    EXPECT_EQ(preparation.inWords(),
              (QStringList{u"Copy MT32/DRV over DRV"_s, u"Copy MT32/FRESH.CFG over FRESH.CFG"_s,
                           u"Copy MT32/OTHER.DRV over OTHER.DRV"_s, u"Copy MT32/SOUND.DRV over sound.drv"_s}));
    EXPECT_EQ(DosCollection::read(collection.game() + "/sound.drv"_L1), "old") << "planning changes nothing";
    QMap<QString, QByteArray> expected = drivers;
    expected.insert({{u"sound.drv"_s, "new driver"},
                     {u"sound.drv.kept"_s, "old"},
                     {u"OTHER.DRV"_s, "of this card"},
                     {u"FRESH.CFG"_s, "fresh"},
                     {u"DRV/GAME.SAV"_s, "a saved game"},
                     {u"DRV/SONG.MID"_s, "new song"},
                     {u"DRV/SONG.MID.kept"_s, "old song"}});
    for (int i = 0; i < 2; ++i) {
        carryOut(preparation);
        EXPECT_EQ(contents(collection.game()), expected);
    }
    collection.put(u"sound.drv"_s, "changed by the game");
    carryOut(preparation);
    EXPECT_EQ(DosCollection::read(collection.game() + "/sound.drv.kept2"_L1), "changed by the game");
}

TEST(AudioDrivers, LoseNothingWhenTheProgramIsKilled) {
    DosCollection collection;
    QSet<QByteArray> own;
    for (int i = 0; i < 12; ++i) {
        const QString name = u"F%1.DAT"_s.arg(i), folder = i % 2 ? u"DRV/"_s : QString();
        collection.put(u"MT32/"_s + folder + name, QByteArray(50000, 'n') + QByteArray::number(i));
        own.insert("own " + QByteArray::number(i));
        collection.put(folder + name, "own " + QByteArray::number(i));
    }
    const FolderPreparation preparation = prepared(collection, withAudio(AudioType::mt32), collection.game());
    int killed = 0;
    for (unsigned delay = 100; delay < 30000; delay += delay / 2) {
        const pid_t child = fork();
        if (child == 0) {
            carryOut(preparation);
            _exit(0);
        }
        usleep(delay);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        killed += WIFSIGNALED(status) ? 1 : 0;
        const QList<QByteArray> present = contents(collection.game()).values();
        for (const QByteArray &content : own)
            ASSERT_TRUE(present.contains(content)) << content.constData() << " after " << delay;
    }
    EXPECT_GT(killed, 0);
    carryOut(preparation);
    const QMap<QString, QByteArray> after = contents(collection.game());
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(after.value((i % 2 ? u"DRV/F%1.DAT"_s : u"F%1.DAT"_s).arg(i)).right(3),
                  ("n" + QByteArray::number(i)).rightJustified(3, 'n'));
    EXPECT_TRUE(after.keys().filter(u".ludarium-"_s).isEmpty()) << "leftovers are swept";
}

TEST(AudioDrivers, LeaveTheOldStateWhenACopyFails) {
    DosCollection collection;
    collection.put(QStringLiteral("MT32/A/good.mid"), "new");
    ASSERT_EQ(mkfifo(QFile::encodeName(collection.game() + QStringLiteral("/MT32/A/pipe")).constData(), 0600), 0);
    collection.put(QStringLiteral("MT32/B.DRV"), "new");
    collection.put(QStringLiteral("A/old.mid"), "old");
    collection.put(QStringLiteral("B.DRV"), "old");
    carryOut(prepared(collection, withAudio(AudioType::mt32), collection.game()));
    QStringList names = listFolder(collection.game()).value_or(QStringList());
    names.sort();
    EXPECT_EQ(names, (QStringList{QStringLiteral("A"), QStringLiteral("B.DRV"), QStringLiteral("MT32")}))
        << "nothing half made stays behind";
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/A/old.mid")), "old");
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/B.DRV")), "old") << "the first failure ends it";
}

TEST(AudioDrivers, NeverGoThroughALink) {
    DosCollection collection;
    const QString outside = collection.put(collection.root() + QStringLiteral("/outside/keep.txt"), "keep");
    const QString folder = parentPath(outside);
    collection.put(QStringLiteral("MT32/keep.txt"), "changed");
    collection.put(QStringLiteral("MT32/DATA/keep.txt"), "changed");
    QFile::link(outside, collection.game() + QStringLiteral("/keep.txt"));
    QFile::link(folder, collection.game() + QStringLiteral("/DATA"));
    QFile::link(outside, collection.game() + QStringLiteral("/MT32/linked.txt"));
    QFile::link(folder, collection.game() + QStringLiteral("/away"));
    collection.put(folder + QStringLiteral("/MT32/keep.txt"), "changed");
    carryOut(prepared(collection, withAudio(AudioType::mt32), collection.game()));
    carryOut(prepared(collection, withAudio(AudioType::mt32), collection.game() + QStringLiteral("/away")));
    EXPECT_EQ(DosCollection::read(outside), "keep");
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/keep.txt")), "changed");
    EXPECT_FALSE(QFile::exists(collection.game() + QStringLiteral("/linked.txt")));
}

TEST(SetupDeletes, RemoveRegularFilesOfTheGameAlone) {
    DosCollection collection;
    const QString outside = collection.put(collection.root() + QStringLiteral("/outside.cfg"), "keep");
    const QString neighbour = collection.put(collection.game(QStringLiteral("OTHER")) + QStringLiteral("/A.CFG"));
    for (const char *file : {"a.cfg", "SUB/B.CFG", "keep.cfg", "FOLDER/x", "!dos"})
        collection.put(QString::fromLatin1(file));
    QFile::link(outside, collection.game() + QStringLiteral("/LINK.CFG"));
    QFile::link(parentPath(neighbour), collection.game() + QStringLiteral("/AWAY"));
    GameVersionOption version = withAudio(AudioType::none);
    version.setupCommands = QStringList{QStringLiteral(" DEL A.CFG "),
                                        QStringLiteral("del sub\\b.cfg"),
                                        QStringLiteral("del FOLDER"),
                                        QStringLiteral("del ..\\OTHER\\A.CFG"),
                                        QStringLiteral("del AWAY\\A.CFG"),
                                        QStringLiteral("del LINK.CFG"),
                                        QStringLiteral("del !dos"),
                                        QStringLiteral("del /etc/passwd"),
                                        QStringLiteral("del *.*"),
                                        QStringLiteral("del "),
                                        QStringLiteral("copy keep.cfg x.cfg"),
                                        QStringLiteral("del a.cfg"),
                                        QStringLiteral("deltree FOLDER"),
                                        QStringLiteral("del .")};
    const FolderPreparation preparation = prepared(collection, version, collection.game());
    EXPECT_EQ(preparation.inWords(), (QStringList{QStringLiteral("Remove a.cfg"), QStringLiteral("Remove SUB/B.CFG")}));
    carryOut(preparation);
    for (const char *kept : {"keep.cfg", "FOLDER/x", "!dos", "LINK.CFG", "AWAY/A.CFG", "SUB"})
        EXPECT_TRUE(QFile::exists(collection.game() + u'/' + QString::fromLatin1(kept))) << kept;
    EXPECT_FALSE(QFile::exists(collection.game() + QStringLiteral("/a.cfg")));
    EXPECT_FALSE(QFile::exists(collection.game() + QStringLiteral("/SUB/B.CFG")));
}

TEST(SetupDeletes, WorkInTheVersionsFolder) {
    DosCollection collection;
    collection.put(QStringLiteral("VGA/A.CFG"));
    collection.put(QStringLiteral("A.CFG"));
    GameVersionOption version = withAudio(AudioType::none);
    version.workingDirectory = QStringLiteral("vga");
    version.setupCommands = QStringList{QStringLiteral("del A.CFG")};
    EXPECT_EQ(prepared(collection, version, collection.game()).inWords(),
              QStringList{QStringLiteral("Remove VGA/A.CFG")});
}

} // namespace
} // namespace ludarium::test
