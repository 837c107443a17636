#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Services/Artwork/ImageLoader.h"
#include "Views/CoverImageProvider.h"
#include "Views/CoverStore.h"
#include "Views/GalleryImageProvider.h"
#include "Views/PlaceholderImageProvider.h"
#include "Views/TitleArt.h"
#include "support/DesktopFixture.h"
#include "support/FixtureCollection.h"
#include "support/SamplePictures.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace ludarium::test {

namespace {

Game named(const QString &title, const QString &platform = QStringLiteral("MS-DOS")) {
    Game game;
    game.id = title;
    game.title = title;
    game.platform = platform;
    return game;
}

} // namespace

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
    QImage wide(400, 200, QImage::Format_RGB32);
    wide.fill(Qt::red);
    const QImage framed = CoverImageProvider::framed(wide, {160, 213}, 8);
    EXPECT_EQ(framed.size(), QSize(160, 80));
    EXPECT_EQ(qAlpha(framed.pixel(0, 0)), 0);
    EXPECT_EQ(framed.pixelColor(80, 40), QColor(Qt::red));
    EXPECT_EQ(qAlpha(framed.pixel(80, 0)), 255);
    EXPECT_TRUE(CoverImageProvider::framed({}, {160, 213}, 8).isNull());
}

TEST(PlaceholderImageProvider, LetsWhiteLettersStandOutOnEveryTint) {
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor &color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    PlaceholderImageProvider provider;
    for (int tint = 0; tint < PlaceholderImageProvider::tints; ++tint) {
        const QImage ground = provider.requestImage(QString::number(tint), nullptr, {120, 160});
        ASSERT_EQ(ground.size(), QSize(120, 160));
        EXPECT_EQ(qAlpha(ground.pixel(0, 0)), 0) << "a round corner";
        double brightest = 0;
        for (int y = 8; y < 152; ++y)
            for (int x = 8; x < 112; ++x)
                brightest = std::max(brightest, luminance(ground.pixelColor(x, y)));
        EXPECT_GT(1.05 / (brightest + 0.05), 4.5) << tint;
        EXPECT_GT(luminance(ground.pixelColor(60, 20)), 1.5 * luminance(ground.pixelColor(60, 140))) << tint;
    }
    EXPECT_EQ(provider.requestImage(QStringLiteral("36"), nullptr, {9, 12}),
              provider.requestImage(QStringLiteral("0"), nullptr, {9, 12}));
}

TEST(CoverImageProvider, AnswersEveryRequestAlsoWhatWasCancelled) {
    QTemporaryDir folder;
    FixtureCollection::write(folder.path());
    auto store = std::make_shared<CoverStore>();
    store->setCollection(folder.path());
    TestHost machine;
    ImageLoader images(machine);
    CoverImageProvider provider(images, store);
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
    EXPECT_EQ(provider.requests()->pending(), 0);
    const auto widthOf = [](const std::shared_ptr<QQuickImageResponse> &response) {
        return std::unique_ptr<QQuickTextureFactory>(response->textureFactory())->textureSize().width();
    };
    EXPECT_GT(widthOf(responses.first()), 100);
    EXPECT_EQ(widthOf(responses.last()), 1) << "no picture is one transparent pixel";
}

TEST(PictureProvider, MakesNothingMoreOnceItsRequestsAreEndedThoughTheEngineIsGone) {
    struct Slow : PictureProvider {
        explicit Slow(std::atomic<int> &making, std::atomic<int> &made) : m_making(making), m_made(made) {}
        ~Slow() override { finish(); }
        QImage produce(const QString &, QSize size, const std::stop_token &) override {
            ++m_making;
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            ++m_made;
            return QImage(size, QImage::Format_RGB32);
        }
        std::atomic<int> &m_making, &m_made;
    };
    std::atomic<int> making = 0, made = 0;
    std::shared_ptr<PictureProvider::Requests> requests;
    {
        QQmlEngine engine;
        auto *slow = new Slow(making, made);
        requests = slow->requests();
        engine.addImageProvider(QStringLiteral("slow"), slow);
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nItem { Repeater { model: 12; Image { asynchronous: true\n"
                          "source: 'image://slow/' + index; sourceSize: Qt.size(4, 4) } } }",
                          {});
        const std::unique_ptr<QObject> images(component.create());
        ASSERT_TRUE(waitUntil([&] { return making > 0; }));
    }
    requests->finish();
    EXPECT_EQ(making, made);
    EXPECT_EQ(requests->pending(), 0);
    const int after = making;
    EXPECT_LT(after, 12) << "what waited is given up";
    QTest::qWait(250);
    EXPECT_EQ(making, after);
}

TEST(CoverImageProvider, AnswersWhileTheDiskIsAwayAndShowsThePictureWhenItIsBack) {
    QTemporaryDir folder;
    FixtureCollection::write(folder.path());
    const QString away = folder.path() + QStringLiteral("-away");
    auto store = std::make_shared<CoverStore>();
    store->setCollection(folder.path());
    TestHost machine;
    ImageLoader images(machine);
    CoverImageProvider provider(images, store);
    const FixtureCollection::Entry &entry = FixtureCollection::entries().first();
    const auto game = std::make_shared<const Game>(named(entry.title, entry.platform));
    const auto widthNow = [&] {
        const std::unique_ptr<QQuickImageResponse> response(
            provider.requestImageResponse(store->url(game).mid(int(strlen("image://cover/"))), {160, 213}));
        bool answered = false;
        QObject::connect(response.get(), &QQuickImageResponse::finished, &machine.notifications,
                         [&answered] { answered = true; });
        EXPECT_TRUE(waitUntil([&] { return answered; }));
        return std::unique_ptr<QQuickTextureFactory>(response->textureFactory())->textureSize().width();
    };
    ASSERT_TRUE(images.bestAvailableImageURL(*game, folder.path())) << "the folders are known";
    ASSERT_TRUE(QDir().rename(folder.path(), away));
    EXPECT_EQ(widthNow(), 1);
    ASSERT_TRUE(QDir().rename(away, folder.path()));
    EXPECT_GT(widthNow(), 100);
}

TEST(CoverImageProvider, PrefersTheBoxInSpaceInTheCoverflow) {
    TestHost machine;
    machine.put(QStringLiteral("/Images/MS-DOS/Box - Front/Quarry-01.jpg"), jpegOf(100, 300));
    machine.put(QStringLiteral("/Images/MS-DOS/Box - 3D/Quarry-01.jpg"), jpegOf(200, 300));
    auto store = std::make_shared<CoverStore>();
    store->setCollection(machine.root());
    ImageLoader images(machine);
    const QString address = store->url(std::make_shared<const Game>(named(QStringLiteral("Quarry"))));
    struct Case {
        CoverImageProvider::Place place;
        int width;
    };
    for (const auto &[place, width] :
         {Case{CoverImageProvider::Place::grid, 50}, Case{CoverImageProvider::Place::coverflow, 100}}) {
        CoverImageProvider provider(images, store, place);
        const std::unique_ptr<QQuickImageResponse> response(
            provider.requestImageResponse(address.mid(int(strlen("image://cover/"))), {150, 150}));
        bool answered = false;
        QObject::connect(response.get(), &QQuickImageResponse::finished, &machine.notifications,
                         [&answered] { answered = true; });
        ASSERT_TRUE(waitUntil([&] { return answered; }));
        const std::unique_ptr<QQuickTextureFactory> texture(response->textureFactory());
        EXPECT_EQ(texture->textureSize().width(), width);
    }
}

TEST(GalleryImageProvider, ServesAnyPathAtTheSizeThatIsAskedFor) {
    TestHost machine;
    ImageLoader images(machine);
    GalleryImageProvider provider(images);
    const QString path = machine.put(QStringLiteral("/100% #1? ü/a b.jpg"), jpegOf(400, 200));
    struct Case {
        QString path;
        QSize asked;
        QSize given;
    };
    for (const auto &[file, asked, given] :
         {Case{path, {100, 100}, {100, 50}}, Case{path, {}, {400, 200}}, Case{path, {80, 0}, {80, 40}},
          Case{path + QStringLiteral("x"), {100, 100}, {1, 1}}}) {
        const QUrl url(GalleryImageProvider::url(file));
        const std::unique_ptr<QQuickImageResponse> response(
            provider.requestImageResponse(url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).mid(1), asked));
        ASSERT_TRUE(waitUntil([&] { return provider.requests()->pending() == 0; }));
        QThread::msleep(20); // the answer follows the count
        EXPECT_EQ(std::unique_ptr<QQuickTextureFactory>(response->textureFactory())->textureSize(), given);
    }
}

TEST(GameMedia, ListsThePicturesOfTheSelectedGameWithTheirNames) {
    DesktopFixture fixture;
    const QString collection = fixture.collection();
    const FixtureCollection::Entry &entry = FixtureCollection::entries().first();
    const auto put = [&](const QString &path) {
        const QString full = collection + QLatin1Char('/') + path.arg(entry.platform, entry.title);
        QDir().mkpath(QFileInfo(full).path());
        QFile file(full);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(jpegOf(40, 30));
    };
    put(QStringLiteral("Images/%1/Screenshot - Gameplay/%2-01.jpg"));
    put(QStringLiteral("Images/%1/Disc/%2-01.jpg"));
    put(QStringLiteral("Videos/%1/%2.mp4"));
    put(QStringLiteral("Music/%1/%2.ogg"));
    ASSERT_TRUE(fixture.load());
    GameMedia &media = *fixture.desktop.detail()->media();
    ASSERT_TRUE(fixture.desktop.browse()->selectTitle(entry.title));
    EXPECT_TRUE(media.isLoading());
    EXPECT_EQ(media.count(), 0);
    ASSERT_TRUE(waitUntil([&] { return !media.isLoading(); }));
    QStringList names;
    for (int row = 0; row < media.count(); ++row)
        names.append(media.data(media.index(row), GameMedia::nameRole).toString());
    EXPECT_EQ(names.filter(QStringLiteral("Screenshot")).size(), 1);
    EXPECT_EQ(names.last(), QStringLiteral("Disc"));
    EXPECT_TRUE(media.video().endsWith(QStringLiteral(".mp4")));
    EXPECT_EQ(media.music().size(), 1);

    put(QStringLiteral("Images/%1/Disc/%2-02.jpg"));
    const QString cover = fixture.desktop.detail()->cover();
    fixture.desktop.detail()->clearImageCache();
    EXPECT_NE(fixture.desktop.detail()->cover(), cover) << "what is on screen is asked for again";
    ASSERT_TRUE(waitUntil([&] { return media.count() == names.size() + 1; }));
    fixture.state.setSelectedGameId({});
    EXPECT_EQ(media.count(), 0);
    EXPECT_FALSE(media.isLoading());
}

TEST(ThumbnailCaching, AsksWhenCoversAreSlowAndDoesWhatIsAnswered) {
    struct Case {
        int answer; ///< -1 closes the question
        bool copies;
        bool silenced;
    };
    for (const auto &[answer, copies, silenced] :
         {Case{0, true, false}, Case{1, false, true}, Case{2, false, false}, Case{-1, false, false}}) {
        DesktopFixture fixture;
        fixture.host.settings.remove(Settings::dismissSlowLoadAlertPermanently);
        ASSERT_TRUE(fixture.load());
        const auto slow = [&] { fixture.host.notifications.post(Notifications::slowLoadDetected); };
        slow();
        ASSERT_TRUE(fixture.dialogs.isActive());
        EXPECT_EQ(
            fixture.dialogs.buttons(),
            (QStringList{QStringLiteral("Cache Now"), QStringLiteral("Never Ask Again"), QStringLiteral("Not Now")}));
        if (answer < 0)
            fixture.dialogs.dismiss();
        else
            fixture.dialogs.answer(answer);
        ImageLoader &images = fixture.state.imageLoader();
        const auto hasCopies = [&] { return images.diskCache().diskCacheSize() > 0; };
        EXPECT_TRUE(waitUntil([&] {
            return fixture.host.settings.value(Settings::dismissSlowLoadAlertPermanently) == silenced &&
                   (!copies || (hasCopies() && !images.isPreCaching()));
        }));
        EXPECT_EQ(hasCopies(), copies);
        EXPECT_EQ(images.isDiskCacheOn(), copies);
        slow();
        EXPECT_EQ(fixture.dialogs.isActive(), !silenced) << "asked again unless that was answered";
    }
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
