#include "Services/Artwork/ArtworkFinder.h"

#include "Services/Artwork/ArtworkNames.h"
#include "support/TestHost.h"

#include <QFile>
#include <algorithm>

namespace ludarium::test {

namespace {

QString text(const char *bytes) {
    return QString::fromUtf8(bytes);
}

Game named(const char *title, const char *platform = "MS-DOS") {
    Game game;
    game.id = game.title = text(title);
    game.platform = text(platform);
    game.releaseYear = 1994;
    return game;
}

class Artwork : public testing::Test {
  protected:
    QString put(const QString &path) { return m_host.put(QStringLiteral("/collection/") + path); }
    void put(std::initializer_list<const char *> paths) {
        for (const char *path : paths)
            put(text(path));
    }
    QString collection() const { return m_host.root() + QStringLiteral("/collection"); }
    /// Below the collection; empty for nothing.
    QString relative(const std::optional<QString> &path) const {
        return path ? path->mid(collection().size() + 1) : QString();
    }
    QString box(const Game &game) {
        ArtworkFinder finder;
        return relative(finder.findImageURL(game, ImageType::boxFront, collection())).section(u'/', 3);
    }
    TestHost m_host;
};

} // namespace

TEST_F(Artwork, FindsAPictureByEachNameThatItMayHave) {
    Game inFolder = named("Known by Its Folder");
    inFolder.configurationPath = text("eXo\\eXoDOS\\!dos\\kbif94\\dosbox.conf");
    Game byProgram = named("Known by Its Program");
    byProgram.applicationPath = text("eXo\\eXoDOS\\Known (1994).bat");
    struct Case {
        Game game;
        const char *file;
    };
    for (const auto &[game, file] : {
             Case{named("Amber: The Return"), "Amber_ The Return-01.jpg"},
             Case{named("Keeper's Gate: II"), "Keeper_s Gate_ II.png"},
             Case{named("What / If?"), "What _ If_-02.webp"},
             Case{named("Shouting"), "SHOUTING-01.JPG"},
             Case{named("Éclair"), "e\xcc\x81"
                                   "clair-01.png"}, // decomposed, as a Mac writes it
             Case{named("In a Region"), "North America/In a Region-01.png"},
             Case{named("Loosely Named"), "The Loosely-Named (1994).jpg"},
             Case{named("Loosely in a Region"), "Europe/Loosely in: a REGION!.gif"},
             Case{inFolder, "kbif94.jpeg"},
             Case{byProgram, "Known (1994).gif"},
         }) {
        put(QStringLiteral("Images/MS-DOS/Box - Front/") + text(file));
        EXPECT_EQ(box(game), text(file)) << qPrintable(game.title);
    }
}

TEST_F(Artwork, TakesTheBestOfSeveralNames) {
    // Each file is put beside those before it and must be preferred to them.
    Game game = named("Keeper's Quarry");
    game.configurationPath = text("eXo\\eXoDOS\\!dos\\quarry94\\dosbox.conf");
    game.applicationPath = text("eXo\\eXoDOS\\Start.bat");
    for (const char *file :
         {"The Keeper's Quarry.jpg", "Europe/Start.jpg", "Europe/Keeper's Quarry-01.jpg", "Start.jpg", "Start.png",
          "quarry94.gif", "Keeper_s Quarry.webp", "Keeper's Quarry.jpg", "Keeper's Quarry.png",
          "Keeper_s Quarry-00.jpg", "Keeper_s Quarry-02.jpg", "Keeper_s Quarry-01.jpg", "Keeper's Quarry-00.jpg",
          "Keeper's Quarry-02.jpg", "Keeper's Quarry-01.webp", "Keeper's Quarry-01.jpg", "keeper's quarry-01.PNG"}) {
        put(QStringLiteral("Images/MS-DOS/Box - Front/") + text(file));
        EXPECT_EQ(box(game), text(file));
    }
}

TEST_F(Artwork, GuessesNothingForShortTitlesAndLooksNowhereElse) {
    put({"Images/MS-DOS/Box - Front/Doomed Harbor-01.jpg", "Images/MS-DOS/Box - Front/Doomed Harbor.txt",
         "Images/MS-DOS/Box - Front/notes/Solitude.txt", "Images/secret.png"});
    EXPECT_EQ(box(named("Doom")), QString());
    EXPECT_EQ(box(named("Doomed")), text("Doomed Harbor-01.jpg"));
    EXPECT_EQ(box(named("Harbor-01.jpgDoomed")), QString()) << "no match across two names";
    EXPECT_EQ(box(named("Solitude")), QString()) << "a text is no picture";
    EXPECT_EQ(box(named("Doomed Harbor", "Windows 3x")), QString());
    EXPECT_EQ(box(named("Doomed Harbor", "../Images/MS-DOS")), QString()) << "a platform's name is one folder";
    EXPECT_EQ(box(named("../../../secret")), QString());
    ArtworkFinder finder;
    EXPECT_EQ(finder.boxFrontURL(named("../../../secret"), collection()), std::nullopt);
}

TEST_F(Artwork, PrefersTheKindsInAnOrderForEachView) {
    const Game game = named("Quarry");
    // From the last choice to the first; each is put beside those before it.
    const auto check = [&](const ImageTypes &preference, auto look) {
        ArtworkFinder fresh;
        fresh.bestAvailableImageURL(game, collection());
        for (auto type = preference.rbegin(); type != preference.rend(); ++type) {
            put(QStringLiteral("Images/%1/%2/Quarry-01.png").arg(game.platform, rawValue(*type)));
            ArtworkFinder finder;
            const std::optional<FoundImage> found = (finder.*look)(game, collection());
            ASSERT_TRUE(found) << qPrintable(rawValue(*type));
            EXPECT_EQ(found->type, *type) << qPrintable(rawValue(*type));
        }
    };
    check(gridPreference, &ArtworkFinder::bestAvailableImageURL);
    QDir(collection()).removeRecursively();
    check(coverflowPreference, &ArtworkFinder::coverflowImageURL);
}

TEST_F(Artwork, AsksTheDiskOnceForAFolderAndRemembersWhatIsNotThere) {
    put({"Images/MS-DOS/Box - Front/Other-01.jpg"});
    const Game game = named("Quarry");
    ArtworkFinder finder;
    EXPECT_FALSE(finder.bestAvailableImageURL(game, collection()));
    put({"Images/MS-DOS/Box - Front/Quarry-01.jpg", "Images/MS-DOS/Clear Logo/Quarry-01.jpg",
         "Videos/MS-DOS/Quarry.mp4"});
    EXPECT_FALSE(finder.bestAvailableImageURL(game, collection())) << "the miss is kept";
    EXPECT_FALSE(finder.findImageURL(game, ImageType::boxFront, collection())) << "the listing is kept";
    EXPECT_TRUE(finder.findImageURL(game, ImageType::clearLogo, collection()))
        << "a missing folder is looked for again";
    EXPECT_TRUE(finder.videoURL(game, collection()));
    EXPECT_TRUE(finder.clearFound(game, collection()).isEmpty()) << "no picture was known";
    EXPECT_EQ(finder.bestAvailableImageURL(game, collection())->type, ImageType::boxFront);
    EXPECT_EQ(finder.clearFound(game, collection()),
              QStringList(collection() + text("/Images/MS-DOS/Box - Front/Quarry-01.jpg")));
    QDir(collection()).removeRecursively();
    EXPECT_EQ(m_host.log().count(text("Image folder not found")), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(finder.findImageURL(game, ImageType::boxFront, collection()));
    EXPECT_EQ(m_host.log().count(text("Image folder not found: ") + collection()), 1) << "logged once";
}

TEST_F(Artwork, SearchesListedFoldersWithoutTheDisk) {
    put({"Images/MS-DOS/Box - 3D/Japan/Quarry-01.jpg", "Images/C64/Disc/Lantern.png"});
    GameList games;
    for (const Game &game : {named("Quarry"), named("Lantern", "C64"), named("Nothing")})
        games.append(std::make_shared<const Game>(game));
    ArtworkFinder finder;
    const ArtworkFinder::Folders folders = finder.preScanImageDirectories(games, collection());
    QDir(collection()).removeRecursively();
    ArtworkFinder other;
    EXPECT_EQ(relative(other.findImageURLCached(*games[0], ImageType::box3D, collection(), folders)),
              text("Images/MS-DOS/Box - 3D/Japan/Quarry-01.jpg"));
    EXPECT_EQ(other.bestListedImageURL(*games[1], collection(), folders)->type, ImageType::disc);
    EXPECT_FALSE(other.bestListedImageURL(*games[2], collection(), folders));
    EXPECT_FALSE(other.findImageURLCached(*games[0], ImageType::boxFront, collection(), folders));

    EXPECT_FALSE(finder.bestAvailableImageURL(*games[2], collection()));
    put({"Images/MS-DOS/Banner/Nothing.gif"});
    finder.bestListedImageURL(*games[2], collection(), folders);
    EXPECT_FALSE(finder.bestAvailableImageURL(*games[2], collection())) << "a miss of before";
    finder.bestListedImageURL(*games[2], collection(), finder.preScanImageDirectories(games, collection()));
    EXPECT_EQ(finder.bestAvailableImageURL(*games[2], collection())->type, ImageType::banner) << "listed anew";
    finder.clearFound();
    finder.bestListedImageURL(*games[2], collection(), folders);
    EXPECT_TRUE(finder.bestAvailableImageURL(*games[2], collection())) << "older than the clearing";
}

TEST_F(Artwork, ShowsEveryNumberedPictureOfAGameKindAfterKind) {
    put({"Images/MS-DOS/Box - Front/What: If-02.jpg", "Images/MS-DOS/Box - Front/What_ If-01.jpg",
         "Images/MS-DOS/Box - Front/Europe/What- If-01.PNG", "Images/MS-DOS/Box - Front/What: If.jpg",
         "Images/MS-DOS/Box - Front/What: If-notes.txt", "Images/MS-DOS/Box - Front/what: if-01.jpg",
         "Images/MS-DOS/Disc/Cafe\u0301-01.jpg", "Images/MS-DOS/Disc/._Cafe\u0301-02.jpg",
         "Images/MS-DOS/Disc/What: If-01.jpg", "Images/MS-DOS/Box - Back/What: If-01.jpg"});
    ArtworkFinder finder;
    QStringList found;
    for (const FoundImage &image : finder.allImages(named("What: If"), collection()))
        found.append(displayName(image.type) + text(" ") + relative(image.url).section(u'/', 3));
    EXPECT_EQ(found, (QStringList{text("Box Art Europe/What- If-01.PNG"), text("Box Art What: If-02.jpg"),
                                  text("Box Art What_ If-01.jpg"), text("Box Back What: If-01.jpg"),
                                  text("Disc What: If-01.jpg")}));
    EXPECT_EQ(finder.allImages(named("Caf\u00e9"), collection()).size(), 1) << "an accent written in either way";
    EXPECT_FALSE(finder.findImageURL(named("Caf\u00e9-02"), ImageType::disc, collection())) << "no picture";
    EXPECT_EQ(relative(finder.boxFrontURL(named("What: If"), collection())),
              text("Images/MS-DOS/Box - Front/What: If.jpg"));
}

TEST_F(Artwork, FindsVideosManualsAndMusic) {
    Game game = named("The Quarry: II");
    game.configurationPath = text("eXo\\eXoDOS\\!dos\\quarry94\\dosbox.conf");
    game.manualPath = text("Manuals\\MS-DOS\\Own Manual.pdf");
    game.musicPath = text("Music\\MS-DOS\\Own Music.mp3");
    const auto find = [&](const QString &what) {
        ArtworkFinder finder;
        return relative(what == text("video")    ? finder.videoURL(game, collection())
                        : what == text("manual") ? finder.manualURL(game, collection())
                                                 : finder.musicURL(game, collection()));
    };
    // Each is put beside those before it and must be preferred to them.
    struct Case {
        const char *what;
        QStringList files;
    };
    for (const auto &[what, files] :
         {Case{"video",
               {text("quarry94.mov"), text("quarry94.mp4"), text("The Quarry_ II.mkv"), text("The Quarry: II.mkv"),
                text("Quarry: II, The.avi"), text("The Quarry: II (1994).webm"), text("Quarry: II, The (1994).mov"),
                text("Quarry_ II, The (1994).mp4"), text("quarry: ii, the (1994).MP4")}},
          Case{"manual", {text("quarry94.html"), text("quarry94.txt"), text("quarry94.pdf"), text("Own Manual.pdf")}},
          Case{"music",
               {text("quarry94.it"), text("quarry94.mp3"), text("The Quarry: II.ogg"), text("Quarry: II, The/3.S3M"),
                text("Quarry: II, The (1994).xm"), text("Own Music.mp3")}}}) {
        const QString kind = text(what);
        const QString folder = kind == text("video")    ? text("Videos/MS-DOS/")
                               : kind == text("manual") ? text("Manuals/MS-DOS/")
                                                        : text("Music/MS-DOS/");
        EXPECT_EQ(find(kind), QString());
        for (const QString &file : files) {
            put(folder + file);
            EXPECT_EQ(find(kind), folder + (file.endsWith(text("S3M")) ? file.section(u'/', 0, 0) : file)) << what;
        }
    }
    game.manualPath = text("..\\outside.pdf");
    game.musicPath = text("Music\\MS-DOS");
    m_host.put(text("/outside.pdf"));
    const Game late = named("Late Music");
    ArtworkFinder lasting;
    EXPECT_FALSE(lasting.musicURL(late, collection()));
    put({"Music/MS-DOS/Late Music.ogg"});
    EXPECT_TRUE(lasting.musicURL(late, collection())) << "what was not there is looked for again";
    EXPECT_EQ(find(text("manual")), text("Manuals/MS-DOS/quarry94.pdf")) << "nothing outside the collection";
    EXPECT_EQ(find(text("music")), text("Music/MS-DOS/Quarry: II, The (1994).xm")) << "a folder is no file";
}

TEST_F(Artwork, PlaysTheTracksOfAFolderInOrder) {
    put({"Music/MS-DOS/Quarry (1994)/02.ogg", "Music/MS-DOS/Quarry (1994)/01.AAC", "Music/MS-DOS/Quarry (1994)/10.xm",
         "Music/MS-DOS/Quarry (1994)/cover.png", "Music/MS-DOS/Lantern/only.aac", "Music/MS-DOS/Single.mod"});
    const auto tracks = [&](const char *title) {
        ArtworkFinder finder;
        QStringList names;
        for (const QString &path : finder.musicFiles(named(title), collection()))
            names.append(path.section(u'/', -1));
        return names;
    };
    EXPECT_EQ(tracks("Quarry"), (QStringList{text("01.AAC"), text("02.ogg"), text("10.xm")}));
    EXPECT_EQ(tracks("Single"), QStringList(text("Single.mod")));
    EXPECT_EQ(tracks("Lantern"), QStringList()) << "a folder without one of the usual kinds is none of music";
}

TEST(ArtworkNames, MoveTheArticleOnlyWhenThereIsOne) {
    struct Case {
        const char *title;
        const char *moved;
    };
    for (const auto &[title, moved] :
         {Case{"The Quarry", "Quarry, The"}, Case{"A  Quarry ", "Quarry, A"}, Case{"An Orchard", "Orchard, An"},
          Case{"Theory", ""}, Case{"the quarry", ""}, Case{"Quarry", ""}})
        EXPECT_EQ(ArtworkNames::moveArticleToEnd(text(title)), text(moved)) << title;
}

} // namespace ludarium::test
