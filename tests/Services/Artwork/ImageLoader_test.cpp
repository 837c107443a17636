#include "Services/Artwork/ImageLoader.h"

#include "Host/AppLogger.h"
#include "Host/Imaging/ImageCodec.h"
#include "Host/Settings.h"
#include "support/SamplePictures.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace ludarium::test {

namespace {

QString text(const char *bytes) {
    return QString::fromUtf8(bytes);
}

GamePtr gameCalled(const QString &title) {
    Game game;
    game.id = game.title = title;
    game.platform = QStringLiteral("MS-DOS");
    return std::make_shared<const Game>(std::move(game));
}

void setTime(const QString &path, qint64 secondsAgo) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFile::FileModificationTime));
}

class Images : public testing::Test {
  protected:
    QString putBox(const QString &title, const QByteArray &data = jpegOf(900, 1200)) {
        return m_host.put(QStringLiteral("/collection/Images/MS-DOS/Box - Front/%1-01.jpg").arg(title), data);
    }
    QString collection() const { return m_host.root() + QStringLiteral("/collection"); }
    void turnDiskCacheOn() { m_host.settings.setValue(Settings::enableThumbnailDiskCache, true); }
    ImageLoader &loader() {
        if (!m_loader)
            m_loader = std::make_unique<ImageLoader>(m_host);
        return *m_loader;
    }
    bool waitUntil(const std::function<bool()> &condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }
    QStringList posted() const { return m_posted; }
    void listen() {
        QObject::connect(&m_host.notifications, &NotificationCenter::posted, &m_context,
                         [this](const QString &name) { m_posted.append(name); });
    }
    TestHost m_host;

  private:
    std::unique_ptr<ImageLoader> m_loader;
    QObject m_context;
    QStringList m_posted;
};

} // namespace

TEST(ImageMemoryCache, DropsTheLeastRecentlyUsedBeyondEitherBound) {
    struct Case {
        const char *what;
        qsizetype countLimit;
        qint64 costLimit;
        int inserted;
        const char *kept; ///< the keys that stay, the first of which was looked at before the last insertion
    };
    const qint64 one = quarters(10, 10).bytes();
    for (const auto &[what, countLimit, costLimit, inserted, kept] :
         {Case{"within both", 9, 9 * one, 3, "0 1 2"}, Case{"by count", 3, 99 * one, 6, "0 4 5"},
          Case{"by cost", 99, 3 * one, 6, "0 4 5"}, Case{"one byte short", 99, 3 * one - 1, 6, "0 5"},
          Case{"too large for it", 99, one - 1, 4, ""}}) {
        ImageMemoryCache cache(countLimit, costLimit);
        for (int i = 0; i < inserted; ++i) {
            cache.object(text("0"));
            cache.insert(QString::number(i), quarters(10, 10));
        }
        QStringList found;
        for (int i = 0; i < inserted; ++i)
            if (!cache.object(QString::number(i)).isNull())
                found.append(QString::number(i));
        EXPECT_EQ(found.join(u' '), text(kept)) << what;
        EXPECT_EQ(cache.count(), found.size()) << what;
        EXPECT_EQ(cache.totalCost(), found.size() * one) << what;
    }
    ImageMemoryCache cache(9, 1'000'000);
    cache.insert(text("a_1"), quarters(10, 10));
    cache.insert(text("a_1"), quarters(20, 10));
    cache.insert(text("a_2"), quarters(10, 10));
    cache.insert(text("b_1"), quarters(10, 10));
    EXPECT_EQ(cache.totalCost(), 4 * one) << "the same key replaces";
    cache.removePrefix(text("a_"));
    EXPECT_EQ(cache.totalCost(), one);

    Bitmap glass = quarters(3, 3);
    glass.opaque = false;
    glass.pixels[7] = 0;
    for (const Bitmap &image : {quarters(3, 3), glass}) {
        cache.insert(text("c"), image);
        EXPECT_EQ(cache.object(text("c")).pixels, image.pixels) << "whatever form they are kept in";
    }
}

TEST(LoadTimes, AskOnceWhenTheMedianOfTheLastTwentyIsSlow) {
    struct Case {
        const char *what;
        QList<double> seconds;
        bool diskCache;
        int askedAt; ///< the number of the sample, 0 for never
    };
    QList<double> recovered(25, 0.01);
    for (int i = 0; i < 11; ++i)
        recovered.append(0.2);
    for (const auto &[what, seconds, diskCache, askedAt] :
         {Case{"slow from the start", QList<double>(30, 0.2), false, 5},
          Case{"four samples prove nothing", QList<double>(4, 9), false, 0},
          Case{"exactly the bound", QList<double>(30, 0.05), false, 0},
          Case{"some slow", {0.2, 0.2, 0.01, 0.01, 0.01, 0.01}, false, 0},
          Case{"the disk cache is on", QList<double>(30, 0.2), true, 0},
          Case{"slow later: the tenth of the last twenty", recovered, false, 35}}) {
        LoadTimes times;
        int asked = 0;
        for (int i = 0; i < seconds.size(); ++i)
            if (times.record(seconds[i], diskCache)) {
                EXPECT_EQ(asked, 0) << what << ": asked twice";
                asked = i + 1;
            }
        EXPECT_EQ(asked, askedAt) << what;
        EXPECT_EQ(times.samples(), seconds.last(std::min<qsizetype>(20, seconds.size()))) << what;
    }
}

TEST_F(Images, AreKeptInMemoryUntilTheyAreCleared) {
    const QString url = putBox(text("Quarry"));
    const Bitmap small = await(loader().thumbnail(url, {60, 80}));
    EXPECT_EQ(QSize(small.width, small.height), QSize(120, 160)) << "twice the points, for a dense screen";
    const Bitmap whole = await(loader().loadImage(url));
    EXPECT_EQ(QSize(whole.width, whole.height), QSize(900, 1200));
    EXPECT_EQ(loader().thumbnailCache().totalCost(), 120 * 160 * 4);
    EXPECT_EQ(loader().imageCache().totalCost(), 900 * 1200 * 4);
    QFile::remove(url);
    EXPECT_FALSE(await(loader().thumbnail(url, {60, 80})).isNull());
    EXPECT_FALSE(await(loader().loadImage(url)).isNull());
    EXPECT_TRUE(await(loader().thumbnail(url, {61, 80})).isNull()) << "another size was never decoded";
    loader().clearCache();
    EXPECT_TRUE(await(loader().thumbnail(url, {60, 80})).isNull());
    EXPECT_TRUE(await(loader().loadImage(url)).isNull());
}

TEST_F(Images, OfOneGameAreForgottenAlone) {
    const GamePtr game = gameCalled(text("Quarry"));
    const GamePtr other = gameCalled(text("Lantern"));
    const QHash<QString, QString> urls{{game->id, putBox(game->title)}, {other->id, putBox(other->title)}};
    for (const GamePtr &each : {game, other}) {
        const QString url = urls[each->id];
        EXPECT_EQ(loader().bestAvailableImageURL(*each, collection())->url, url);
        await(loader().thumbnail(url, {60, 80}));
        await(loader().loadImage(url));
    }
    loader().clearGameCache(*game, collection());
    EXPECT_EQ(loader().thumbnailCache().count(), 1);
    EXPECT_EQ(loader().imageCache().count(), 1);
    EXPECT_TRUE(m_host.log().contains(text("🔄 Cleared image cache for game: Quarry (1 images)")));
}

TEST_F(Images, ThatAreBrokenAreLoggedOnceAndNotReadAgain) {
    const QString broken = putBox(text("Broken"), "\xff\xd8\xff not a picture");
    const QString gone = collection() + text("/none.jpg");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(await(loader().thumbnail(broken, {60, 80})).isNull());
        EXPECT_TRUE(await(loader().thumbnail(gone, {60, 80})).isNull());
    }
    EXPECT_EQ(m_host.log().count(broken), 1);
    EXPECT_EQ(m_host.log().count(gone), 1);
    QFile::remove(broken);
    putBox(text("Broken"));
    m_host.put(text("/collection/none.jpg"), jpegOf(30, 40));
    EXPECT_TRUE(await(loader().thumbnail(broken, {60, 80})).isNull())
        << "known to be broken until the cache is cleared";
    EXPECT_FALSE(await(loader().thumbnail(gone, {60, 80})).isNull()) << "a disk that is back is read again";
    loader().clearCache();
    EXPECT_FALSE(await(loader().thumbnail(broken, {60, 80})).isNull());
}

TEST_F(Images, OfAVolumeThatWentAwayDoNotFillTheLog) {
    for (int i = 0; i < 300; ++i)
        EXPECT_TRUE(await(loader().thumbnail(collection() + text("/gone%1.jpg").arg(i), {60, 80})).isNull());
    EXPECT_EQ(m_host.log().count(text("Picture cannot be shown")), 100);
}

TEST_F(Images, ThatAreNoLongerWantedAreNotDecoded) {
    const QString url = putBox(text("Quarry"));
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(await(loader().thumbnail(url, {60, 80}, stop.get_token())).isNull());
    EXPECT_EQ(loader().thumbnailCache().count(), 0);
    EXPECT_FALSE(m_host.log().contains(text("Picture cannot be shown"))) << "that is no failure";
    EXPECT_FALSE(await(loader().thumbnail(url, {60, 80})).isNull());
    EXPECT_TRUE(decodeImageFile(url, 0, stop.get_token()).isNull());
    EXPECT_TRUE(decodeImage(jpegOf(900, 1200), 0, stop.get_token()).isNull()) << "in the middle of decoding";
}

TEST_F(Images, AreCopiedToTheLocalDiskWhileThatIsOn) {
    const QString url = putBox(text("Quarry"));
    const ThumbnailDiskCache &disk = loader().diskCache();
    await(loader().thumbnail(url, {60, 80}));
    EXPECT_FALSE(QFileInfo::exists(disk.directory())) << "off unless it was turned on";
    turnDiskCacheOn();
    await(loader().thumbnail(url, {61, 80}));
    ASSERT_TRUE(waitUntil([&] { return disk.contains(url); }));
    const QByteArray digest =
        QCryptographicHash::hash(url.toLower().toUtf8(), QCryptographicHash::Sha256).first(16).toHex();
    EXPECT_EQ(disk.diskCacheURL(url), disk.directory() + u'/' + QString::fromLatin1(digest) + text(".jpg"));
    const Bitmap copy = decodeImageFile(disk.diskCacheURL(url));
    EXPECT_EQ(QSize(copy.width, copy.height), QSize(450, 600));
    EXPECT_EQ(disk.diskCacheSize(), QFileInfo(disk.diskCacheURL(url)).size()) << "nothing else is left beside it";

    QFile::remove(url);
    loader().clearCache();
    EXPECT_EQ(await(loader().thumbnail(url, {60, 80})).height, 160) << "the copy serves while the disk is away";
    disk.clearDiskCache();
    EXPECT_TRUE(QFileInfo(disk.directory()).isDir());
    EXPECT_EQ(disk.diskCacheSize(), 0);
    EXPECT_TRUE(m_host.log().contains(text("Disk thumbnail cache cleared")));
}

TEST_F(Images, AreCopiedAgainWhenTheyChangedAndOnlyThen) {
    const QString url = putBox(text("Quarry"), jpegOf(300, 400));
    const ThumbnailDiskCache disk(m_host.scratch() + text("/thumbnails"));
    const auto sizeOfCopy = [&] { return disk.loadFromDiskCache(url, 9999).width; };
    EXPECT_TRUE(disk.saveToDiskCacheFromSource(url));
    EXPECT_FALSE(disk.saveToDiskCacheFromSource(url));
    setTime(disk.diskCacheURL(url), 60);
    putBox(text("Quarry"), jpegOf(200, 400));
    EXPECT_EQ(sizeOfCopy(), 0) << "older than its picture";
    EXPECT_TRUE(disk.saveToDiskCacheFromSource(url));
    EXPECT_EQ(sizeOfCopy(), 200);

    // An earlier version kept the case of the path.
    setTime(url, 60);
    ASSERT_NE(disk.legacyDiskCacheURL(url), disk.diskCacheURL(url));
    ASSERT_TRUE(QFile::rename(disk.diskCacheURL(url), disk.legacyDiskCacheURL(url)));
    EXPECT_EQ(sizeOfCopy(), 200);
    EXPECT_FALSE(disk.saveToDiskCacheFromSource(url));

    QFile damaged(disk.legacyDiskCacheURL(url));
    ASSERT_TRUE(damaged.resize(100));
    EXPECT_EQ(sizeOfCopy(), 0);
    EXPECT_FALSE(damaged.exists()) << "a damaged copy makes room";
}

TEST_F(Images, SayWhyACopyCouldNotBeMade) {
    const ThumbnailDiskCache disk(m_host.scratch() + text("/thumbnails"));
    const QString text1 = putBox(text("Text"), "no picture");
    EXPECT_FALSE(disk.saveToDiskCacheFromSource(text1));
    EXPECT_FALSE(disk.saveToDiskCacheFromSource(collection() + text("/none.jpg")));
    m_host.put(m_host.scratch().mid(m_host.root().size()) + text("/file"), "in the way");
    const ThumbnailDiskCache blocked(m_host.scratch() + text("/file"));
    EXPECT_FALSE(blocked.saveToDiskCacheFromSource(putBox(text("Quarry"))));
    for (const char *line : {"Disk cache save failed: cannot generate thumbnail for Text-01.jpg",
                             "Disk cache save failed: cannot read source none.jpg",
                             "Disk cache save failed: write error for Quarry-01.jpg: "})
        EXPECT_TRUE(m_host.log().contains(text(line))) << line;
}

TEST_F(Images, AreAllCopiedByOneRunThatShowsHowFarItIs) {
    GameList games;
    for (int i = 0; i < 40; ++i) {
        games.append(gameCalled(text("Game Number %1").arg(i, 3, 10, QLatin1Char('0'))));
        if (i % 4 != 3)
            putBox(games.last()->title, i % 4 == 2 ? "broken" : jpegOf(90, 120));
    }
    QStringList statuses;
    double last = 0;
    QObject::connect(&loader(), &ImageLoader::preCacheChanged, &loader(), [&] {
        statuses.append(loader().preCacheStatus());
        if (loader().preCacheStatus().startsWith(text("Scanning")))
            last = 0;
        EXPECT_GE(loader().preCacheProgress(), last);
        EXPECT_LE(loader().preCacheProgress(), 1);
        last = loader().preCacheProgress();
    });
    const PreCacheCount count = await(loader().preCacheAllThumbnails(games, collection()));
    EXPECT_EQ(count.cached, 20);
    EXPECT_EQ(count.skipped, 20);
    EXPECT_FALSE(loader().isPreCaching());
    EXPECT_EQ(statuses.first(), text("Scanning image directories..."));
    EXPECT_EQ(statuses.last(), text("Done! 20 thumbnails cached."));
    EXPECT_EQ(statuses.filter(text("Caching thumbnails...")).size(), statuses.size() - 2);
    EXPECT_TRUE(m_host.log().contains(text("Pre-cache complete: 20 cached, 20 skipped out of 40 games")));
    EXPECT_EQ(QDir(loader().diskCache().directory()).entryList(QDir::Files | QDir::Hidden).size(), 20);

    EXPECT_EQ(await(loader().preCacheAllThumbnails(games, collection())).cached, 0) << "nothing is done twice";
    loader().diskCache().clearDiskCache();
    await(loader().backgroundPreCacheThumbnails(games, collection()));
    EXPECT_EQ(loader().diskCache().diskCacheSize(), 0) << "not without the setting";
    turnDiskCacheOn();
    await(loader().backgroundPreCacheThumbnails(games, collection()));
    EXPECT_TRUE(m_host.log().contains(text("Background pre-cache complete: 20 cached, 20 skipped in ")));
}

TEST_F(Images, AreNotCopiedAnyFurtherOnceTheRunIsCancelled) {
    GameList games;
    const QByteArray picture = jpegOf(900, 1200);
    for (int i = 0; i < 400; ++i) {
        games.append(gameCalled(text("Game Number %1").arg(i, 3, 10, QLatin1Char('0'))));
        putBox(games.last()->title, picture);
    }
    QObject::connect(&loader(), &ImageLoader::preCacheChanged, &loader(), [&] {
        if (loader().preCacheProgress() > 0)
            loader().cancelPreCache();
    });
    const PreCacheCount count = await(loader().preCacheAllThumbnails(games, collection()));
    EXPECT_TRUE(count.stopped);
    EXPECT_LT(count.cached, 200);
    EXPECT_FALSE(loader().isPreCaching());
    EXPECT_EQ(loader().preCacheStatus(), QString());
    EXPECT_FALSE(m_host.log().contains(text("Pre-cache complete")));
    EXPECT_EQ(QDir(loader().diskCache().directory()).entryList(QDir::Files | QDir::Hidden).size(), count.cached)
        << "no half copy is left";
}

TEST_F(Images, ThatAreSlowMakeTheWindowAskOnce) {
    listen();
    // A picture that takes longer than the bound on any machine: its file is a large one.
    const QByteArray large = jpegOf(4000, 5000);
    for (int i = 0; i < 6; ++i)
        await(loader().thumbnail(putBox(text("Large %1").arg(i), large), {2000, 2500}));
    ASSERT_TRUE(waitUntil([&] { return !posted().isEmpty(); }));
    EXPECT_EQ(posted(), QStringList(text("ImageLoader.slowLoadDetected")));
}

} // namespace ludarium::test
