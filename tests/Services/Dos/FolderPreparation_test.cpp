#include "Services/Dos/FolderPreparation.h"

#include "DosCollection.h"

#include <sys/stat.h>

namespace ludarium::test {
namespace {

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

TEST(AudioDrivers, ReplaceTheGamesOwnFilesAndFolders) {
    DosCollection collection;
    collection.put(QStringLiteral("MT32/SOUND.DRV"), "new driver");
    collection.put(QStringLiteral("MT32/DATA/song.mid"), "new song");
    collection.put(QStringLiteral("MT32/FRESH.CFG"), "fresh");
    collection.put(QStringLiteral("sound.drv"), "old");
    collection.put(QStringLiteral("DATA/old.mid"), "old");
    const FolderPreparation preparation = prepared(collection, withAudio(AudioType::mt32), collection.game());
    EXPECT_EQ(preparation.inWords(), (QStringList{QStringLiteral("Copy MT32/DATA over DATA"),
                                                  QStringLiteral("Copy MT32/FRESH.CFG over FRESH.CFG"),
                                                  QStringLiteral("Copy MT32/SOUND.DRV over sound.drv")}));
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/sound.drv")), "old")
        << "planning changes nothing";
    for (int i = 0; i < 2; ++i)
        carryOut(preparation);
    QStringList names = listFolder(collection.game()).value_or(QStringList());
    names.sort();
    EXPECT_EQ(names, (QStringList{QStringLiteral("DATA"), QStringLiteral("FRESH.CFG"), QStringLiteral("MT32"),
                                  QStringLiteral("sound.drv")}));
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/sound.drv")), "new driver");
    EXPECT_EQ(DosCollection::read(collection.game() + QStringLiteral("/DATA/song.mid")), "new song");
    EXPECT_FALSE(QFile::exists(collection.game() + QStringLiteral("/DATA/old.mid")));
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
