#include "Views/CoverFinder.h"
#include "Views/CoverImageProvider.h"
#include "Views/CoverStore.h"
#include "Views/TitleArt.h"
#include "support/FixtureCollection.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

Game named(const QString &title, const QString &platform = QStringLiteral("MS-DOS")) {
    Game game;
    game.id = title;
    game.title = title;
    game.platform = platform;
    return game;
}

class Covers : public testing::Test {
  protected:
    void put(const QString &path) {
        const QString full = m_folder.filePath(QStringLiteral("Images/") + path);
        QDir().mkpath(QFileInfo(full).path());
        QFile file(full);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QString find(const Game &game) {
        const QString found = CoverFinder(m_folder.path()).find(game);
        return found.isEmpty() ? found : QDir(m_folder.filePath(QStringLiteral("Images"))).relativeFilePath(found);
    }
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(Covers, AreFoundByTheTitleAsAFileName) {
    struct Case {
        const char *title;
        const char *file;
    };
    for (const auto &[title, file] : {
             Case{"Amber: The Return", "MS-DOS/Box - Front/Amber_ The Return-01.jpg"},
             Case{"Keeper's Gate: II", "MS-DOS/Box - Front/Keeper_s Gate_ II.png"},
             Case{"What / If?", "MS-DOS/Box - Front/What _ If_-02.webp"},
             Case{"Shouting", "MS-DOS/Box - Front/SHOUTING-01.JPG"},
             Case{"In a Region", "MS-DOS/Box - Front/North America/In a Region-01.png"},
             Case{"Loosely Named", "MS-DOS/Box - Front/The Loosely-Named (1994).jpg"},
             Case{"Only a Screenshot", "MS-DOS/Screenshot - Gameplay/Only a Screenshot-01.png"},
         }) {
        put(QString::fromUtf8(file));
        EXPECT_EQ(find(named(QString::fromUtf8(title))), QString::fromUtf8(file)) << title;
    }
}

TEST_F(Covers, PreferTheLowerNumberAndTakeNumberZeroLast) {
    put(QStringLiteral("MS-DOS/Box - Front/Quarry.jpg"));
    EXPECT_EQ(find(named(QStringLiteral("Quarry"))), QStringLiteral("MS-DOS/Box - Front/Quarry.jpg"));
    put(QStringLiteral("MS-DOS/Box - Front/Quarry-00.jpg"));
    EXPECT_EQ(find(named(QStringLiteral("Quarry"))), QStringLiteral("MS-DOS/Box - Front/Quarry-00.jpg"));
    put(QStringLiteral("MS-DOS/Box - Front/Quarry-02.jpg"));
    EXPECT_EQ(find(named(QStringLiteral("Quarry"))), QStringLiteral("MS-DOS/Box - Front/Quarry-02.jpg"));
    put(QStringLiteral("MS-DOS/Screenshot - Gameplay/Quarry-01.jpg"));
    EXPECT_EQ(find(named(QStringLiteral("Quarry"))), QStringLiteral("MS-DOS/Box - Front/Quarry-02.jpg"));
}

TEST_F(Covers, AreNotGuessedForShortTitlesNorLookedForOutside) {
    put(QStringLiteral("MS-DOS/Box - Front/Doomed Harbor-01.jpg"));
    EXPECT_EQ(find(named(QStringLiteral("Doom"))), QString());
    EXPECT_EQ(find(named(QStringLiteral("Doomed Harbor"), QStringLiteral("Windows 3x"))), QString());
    EXPECT_EQ(find(named(QStringLiteral("Doomed Harbor"), QStringLiteral("../Images/MS-DOS"))), QString())
        << "a platform's name is one folder";
}

TEST(CoverStore, KeepsTheAddressOfAGameUntilTheCollectionChanges) {
    CoverStore store;
    store.setCollection(QStringLiteral("/one"));
    const auto first = std::make_shared<const Game>(named(QStringLiteral("Quarry")));
    const auto renewed = std::make_shared<const Game>(named(QStringLiteral("Quarry")));
    const QString url = store.url(first);
    EXPECT_EQ(store.url(renewed), url);
    const QString address = url.mid(QStringLiteral("image://cover/").size());
    ASSERT_TRUE(store.source(address));
    EXPECT_EQ(store.source(address)->game, renewed);
    store.setCollection(QStringLiteral("/two"));
    EXPECT_FALSE(store.source(address));
    EXPECT_NE(store.url(first), url);
    EXPECT_FALSE(store.source(QStringLiteral("2/99")));
    EXPECT_FALSE(store.source(QStringLiteral("nonsense")));
}

TEST(CoverImageProvider, FitsThePictureIntoTheBoxWithTransparentCorners) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("wide.png"));
    QImage wide(400, 200, QImage::Format_RGB32);
    wide.fill(Qt::red);
    ASSERT_TRUE(wide.save(path));
    const QImage decoded = CoverImageProvider::decode(path, {160, 213}, 8);
    EXPECT_EQ(decoded.size(), QSize(160, 80));
    EXPECT_EQ(qAlpha(decoded.pixel(0, 0)), 0);
    EXPECT_EQ(decoded.pixelColor(80, 40), QColor(Qt::red));
    EXPECT_EQ(qAlpha(decoded.pixel(80, 0)), 255);

    QFile broken(folder.filePath(QStringLiteral("broken.jpg")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("\xff\xd8\xff not a picture");
    broken.close();
    EXPECT_TRUE(CoverImageProvider::decode(broken.fileName(), {160, 213}, 8).isNull());
}

TEST(CoverImageProvider, AnswersEveryRequestAlsoWhatWasCancelled) {
    QTemporaryDir folder;
    FixtureCollection::write(folder.path());
    auto store = std::make_shared<CoverStore>();
    store->setCollection(folder.path());
    CoverImageProvider provider(store);
    QList<std::shared_ptr<QQuickImageResponse>> responses;
    QList<QSize> sizes;
    const FixtureCollection::Entry &entry = FixtureCollection::entries().first();
    const QString address =
        store->url(std::make_shared<const Game>(named(entry.title, entry.platform))).mid(int(strlen("image://cover/")));
    int answered = 0;
    QObject context;
    for (int i = 0; i < 40; ++i) {
        responses.append(std::shared_ptr<QQuickImageResponse>(
            provider.requestImageResponse(i == 39 ? QStringLiteral("0/0") : address, {160, 213})));
        QObject::connect(responses.last().get(), &QQuickImageResponse::finished, &context, [&answered] { ++answered; });
        if (i % 2 == 1)
            responses.last()->cancel();
    }
    ASSERT_TRUE(waitUntil([&] { return answered == 40; }));
    EXPECT_EQ(provider.pending(), 0);
    const auto widthOf = [](const std::shared_ptr<QQuickImageResponse> &response) {
        return std::unique_ptr<QQuickTextureFactory>(response->textureFactory())->textureSize().width();
    };
    EXPECT_GT(widthOf(responses.first()), 100);
    EXPECT_EQ(widthOf(responses.last()), 1) << "no picture is one transparent pixel";
}

TEST(TitleArt, TakesTheFirstLettersOfTheWordsThatCount) {
    struct Case {
        const char *title;
        const char *initials;
    };
    for (const auto &[title, initials] :
         {Case{"Copper Harbor", "CH"}, Case{"The Copper Harbor", "CH"}, Case{"the a", "A"}, Case{"quarry", "Q"},
          Case{"\"4D\" Racing", "4R"}, Case{"Éclair über alles", "ÉÜ"}, Case{"The", "T"}, Case{"", "?"},
          Case{"!!!", "?"}})
        EXPECT_EQ(titleInitials(QString::fromUtf8(title)), QString::fromUtf8(initials)) << title;
}

TEST(TitleArt, GivesATitleTheSameHueInEveryRun) {
    EXPECT_DOUBLE_EQ(titleHue(QStringLiteral("Copper Harbor")), titleHue(QStringLiteral("Copper Harbor")));
    EXPECT_NE(titleHue(QStringLiteral("Copper Harbor")), titleHue(QStringLiteral("Copper Lantern")));
    for (const char *title : {"", "a", "Quarry"}) {
        EXPECT_GE(titleHue(QString::fromUtf8(title)), 0);
        EXPECT_LT(titleHue(QString::fromUtf8(title)), 1);
    }
}

} // namespace ludarium::test
