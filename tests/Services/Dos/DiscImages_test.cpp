#include "Services/Dos/DiscImages.h"

#include "DosCollection.h"
#include "Models/LaunchError.h"

namespace ludarium::test {
namespace {

TEST(DiscImages, OfOneKindStandInDiscOrder) {
    const std::pair<const char *, const char *> cases[] = {
        {"game.iso|game.img|game.cue|game.bin", "game.cue"},
        {"b.img|A.ISO", "A.ISO"},
        {"b.img|a.bin", "b.img"},
        {"Disc 10.cue|Disc 2.cue|Disc 1.CUE", "Disc 1.CUE|Disc 2.cue|Disc 10.cue"},
        {"Intro.cue|Disc 1.cue", "Disc 1.cue|Intro.cue"},
        {"Disc 1 of 3.cue|Disc 3 of 3.cue|Disc 2 of 3.cue", "Disc 1 of 3.cue|Disc 2 of 3.cue|Disc 3 of 3.cue"},
        {"b.cue|A.cue|c.cue", "A.cue|b.cue|c.cue"},
        {"a 99999999999999999999.cue|a 3.cue", "a 3.cue|a 99999999999999999999.cue"},
        {"notes.txt", ""},
    };
    for (const auto &[files, expected] : cases) {
        DosCollection collection;
        for (const QString &file : QString::fromLatin1(files).split(u'|'))
            collection.put(file);
        FolderView view = sortedView();
        QStringList names;
        for (const QString &path : findAllCDImages(view, collection.game()))
            names.append(lastPathComponent(path));
        EXPECT_EQ(names.join(u'|').toStdString(), expected);
    }
}

TEST(DiscImages, WhoseNumbersContradictTheirNamesAreStillAllMounted) {
    DosCollection collection;
    for (const char *file : {"x3.cue", "b10.cue", "c.cue", "x4.cue", "d.cue", "a11.cue"})
        collection.put(QString::fromLatin1(file));
    FolderView view = sortedView();
    EXPECT_EQ(findAllCDImages(view, collection.game()).size(), 6);
}

TEST(DiscImages, AreTakenFromTheFirstFolderThatHasAny) {
    DosCollection collection;
    collection.put(QStringLiteral("CD/readme.txt"));
    collection.put(QStringLiteral("Discs/a.iso"));
    collection.put(QStringLiteral("disc"));
    collection.put(QStringLiteral("other/b.iso"));
    FolderView view = sortedView();
    EXPECT_EQ(findDiscImagesInFolder(view, collection.game()),
              QStringList{collection.game() + QStringLiteral("/Discs/a.iso")});
}

struct FloppyCase {
    const char *line;
    const char *expected;
};

TEST(FloppyLines, GetAbsolutePaths) {
    const FloppyCase cases[] = {
        {"imgmount a .\\eXoDOS\\Game\\d1.img .\\eXoDOS\\Game\\d2.img -t floppy",
         "imgmount a \"{C}/eXo/eXoDOS/Game/d1.img\" \"{C}/eXo/eXoDOS/Game/d2.img\" -t floppy"},
        {"  imgmount a .\\Game\\sub\\d1.img -t floppy ", "imgmount a \"{C}/eXo/eXoDOS/Game/sub/d1.img\" -t floppy"},
        {"imgmount a .\\eXoDOS\\GAME\\DISK 1.IMG -t floppy",
         "imgmount a \"{C}/eXo/eXoDOS/GAME/DISK 1.IMG -t floppy\""}, // only the first blank is looked at
        {"imgmount a \".\\eXoDOS\\GAME\\DISK 1.IMG\" -t floppy",
         "imgmount a \"{C}/eXo/eXoDOS/GAME/disk 1.img\" -t floppy"},
        {"imgmount a .\\Game\\x.img .\\eXoDOS\\Game\\y.img -t floppy",
         "imgmount a \"{C}/eXo/eXoDOS/Game/x.img\" \"{C}/eXo/eXoDOS/Game/y.img\" -t floppy"},
        {"imgmount a .\\Game\\caf\xe9.img -t floppy", "imgmount a \"{C}/eXo/eXoDOS/Game/café.img\" -t floppy"},
        {"imgmount a c:\\d.img -t floppy", "imgmount a c:\\d.img -t floppy"},
        {"imgmount a -t floppy .\\", "imgmount a -t floppy \"{C}/eXo/eXoDOS/\""},
    };
    DosCollection collection;
    collection.put(QStringLiteral("disk 1.img"));
    for (const FloppyCase &c : cases) {
        FolderView view;
        EXPECT_EQ(
            collection.portable(absoluteFloppyLine(view, c.line, collection.root(), parentPath(collection.game())))
                .toStdString(),
            c.expected)
            << c.line;
    }
}

TEST(FloppyLines, EndAlsoInACollectionWhoseNameLooksLikeARelativePath) {
    for (const QString &collection : {QStringLiteral("/x/.\\"), QStringLiteral("/x/.\\eXoDOS\\")}) {
        FolderView view;
        EXPECT_EQ(absoluteFloppyLine(view, "imgmount a .\\eXoDOS\\G\\a.img .\\b.img -t floppy", collection,
                                     collection + QStringLiteral("/eXo/eXoDOS")),
                  "imgmount a \"" + collection.toUtf8() + "/eXo/eXoDOS/G/a.img\" \"" + collection.toUtf8() +
                      "/eXo/eXoDOS/b.img\" -t floppy");
    }
}

TEST(FloppyLines, AreRefusedWhenTheyLeaveTheCollectionOrHoldAQuote) {
    FolderView view;
    for (const char *line :
         {"imgmount a .\\eXoDOS\\..\\..\\..\\etc\\x.img -t floppy", "imgmount a .\\..\\..\\..\\x.img -t floppy",
          "imgmount a .\\a\"b.img -t floppy", "imgmount a /etc/x.img -t floppy",
          "imgmount a \"/coll/../x.img\" -t floppy", "IMGMOUNT a ~/x.img -t floppy"})
        EXPECT_THROW(absoluteFloppyLine(view, line, QStringLiteral("/coll"), QStringLiteral("/coll/eXo/eXoDOS")),
                     LaunchError)
            << line;
}

} // namespace
} // namespace ludarium::test
