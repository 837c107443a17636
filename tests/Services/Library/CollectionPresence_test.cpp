#include "GameFactory.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/InstallationStatus.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QThreadPool>
#include <gtest/gtest.h>

namespace ludarium::test {

using namespace Qt::StringLiterals;

namespace {

/// A way in which a drive goes: which folder of the collection, and what stands in its place.
struct Departure {
    const char *name;
    QString folder; ///< empty: the collection itself
    enum class Leaves { nothing, emptyFolder, danglingLink } leaves;
};

class CollectionPresenceTest : public testing::Test {
  protected:
    TestHost host;
    LibraryServices services;

    void SetUp() override {
        const auto status = std::make_shared<InstallationStatus>(std::make_shared<AriaIndexManager>());
        services.checkStatus = [=](const GameList &games, const QString &at) { return status->check(games, at); };
        services.checkGame = [=](const GamePtr &game, const QString &at) { return status->checkGame(game, at); };
        QByteArray games;
        for (const char *id : {"alpha", "beta", "gone"})
            games += QByteArray("<Game><ID>") + id + "</ID><Title>" + id +
                     "</Title><Platform>MS-DOS</Platform><ConfigurationPath>eXo\\eXoDOS\\!dos\\" + id +
                     "\\dosbox.conf</ConfigurationPath></Game>";
        host.put(u"/collection/Data/Platforms/MS-DOS.xml"_s, "<LaunchBox>" + games + "</LaunchBox>");
        host.put(u"/collection/eXo/eXoDOS/!dos/alpha/dosbox.conf"_s, "");
        host.put(u"/collection/eXo/eXoDOS/alpha/ALPHA.EXE"_s, "MZ");
        host.put(u"/collection/eXo/eXoDOS/beta.zip"_s, "PK");
        host.put(u"/collection/eXo/util/aria2c.exe"_s, "MZ");
    }

    QString collection() const { return host.root() + u"/collection"_s; }

    static void settle() {
        for (int i = 0; i < 3; ++i) {
            QThreadPool::globalInstance()->waitForDone();
            QCoreApplication::processEvents();
        }
    }
    std::unique_ptr<GameLibrary> load() {
        auto library = std::make_unique<GameLibrary>(host, services);
        await(library->loadCollection(collection()));
        settle();
        return library;
    }
    /// "installed, compressed, missing" of alpha, beta and gone.
    static QString statuses(const GameLibrary &library) {
        QStringList words;
        for (const GamePtr &game : library.games())
            words << (game->isInstalled ? u"installed"_s : game->isCompressed ? u"compressed"_s : u"missing"_s);
        return words.join(u' ');
    }
    void depart(const Departure &how) {
        const QString place = collection() + how.folder;
        ASSERT_TRUE(QDir().rename(place, host.root() + u"/elsewhere"_s));
        if (how.leaves == Departure::Leaves::emptyFolder) {
            ASSERT_TRUE(QDir().mkpath(place));
        } else if (how.leaves == Departure::Leaves::danglingLink) {
            ASSERT_TRUE(QFile::link(u"/nonexistent/drive"_s, place));
        }
    }
    void comeBack(const Departure &how) {
        const QString place = collection() + how.folder;
        QFile::remove(place);
        QDir().rmdir(place);
        ASSERT_TRUE(QDir().rename(host.root() + u"/elsewhere"_s, place));
    }
};

class CollectionGoesAway : public CollectionPresenceTest, public testing::WithParamInterface<Departure> {};

} // namespace

TEST_P(CollectionGoesAway, ChangesNothingOfWhatIsKnownAndNamesTheFolder) {
    const auto library = load();
    const QString known = u"installed compressed missing"_s;
    ASSERT_EQ(statuses(*library), known);
    ASSERT_EQ(library->unavailable(), QString());

    depart(GetParam());
    await(library->updateGameStatus(u"alpha"_s));
    await(library->checkInstalledStatusSilent(collection()));
    EXPECT_EQ(statuses(*library), known);
    EXPECT_TRUE(library->unavailable().contains(collection() + GetParam().folder))
        << library->unavailable().toStdString();
    await(library->loadCollection(collection())); // as Refresh does
    settle();
    EXPECT_EQ(statuses(*library), known);
    if (GetParam().folder.isEmpty())
        library->clearCache(collection());

    const auto nextStart = load();
    EXPECT_EQ(nextStart->errorMessage(), QString());
    EXPECT_EQ(statuses(*nextStart), known);
    EXPECT_TRUE(nextStart->unavailable().contains(collection() + GetParam().folder));
    if (!GetParam().folder.isEmpty()) {
        nextStart->clearCache(collection());
        EXPECT_EQ(statuses(*load()), known) << "read from the XML";
    }

    comeBack(GetParam());
    ASSERT_TRUE(QDir(collection() + u"/eXo/eXoDOS/alpha"_s).removeRecursively());
    for (GameLibrary *each : {library.get(), nextStart.get()}) {
        await(each->loadCollection(collection()));
        settle();
        EXPECT_EQ(each->unavailable(), QString());
        EXPECT_EQ(statuses(*each), u"missing compressed missing"_s);
    }
}

using Leaves = Departure::Leaves;
INSTANTIATE_TEST_SUITE_P(Departures, CollectionGoesAway,
                         testing::Values(Departure{"unplugged", {}, Leaves::nothing},
                                         Departure{"unmounted", {}, Leaves::emptyFolder},
                                         Departure{"gamesUnmounted", u"/eXo"_s, Leaves::emptyFolder},
                                         Departure{"setUnmounted", u"/eXo/eXoDOS"_s, Leaves::emptyFolder},
                                         Departure{"setUnplugged", u"/eXo/eXoDOS"_s, Leaves::danglingLink}),
                         [](const auto &info) { return info.param.name; });

TEST_F(CollectionPresenceTest, IsNotASetThatWasRemoved) {
    const auto library = load();
    ASSERT_TRUE(QDir(collection() + u"/eXo/eXoDOS"_s).removeRecursively());
    await(library->checkInstalledStatusSilent(collection()));
    EXPECT_EQ(statuses(*library), u"missing missing missing"_s);
    EXPECT_EQ(library->unavailable(), QString());
}

TEST_F(CollectionPresenceTest, WithoutAnythingKnownIsAnErrorThatNamesTheFolder) {
    QDir(collection()).removeRecursively();
    const auto library = load();
    EXPECT_EQ(library->errorMessage(), u"Invalid collection. Expected folders: Data/, eXo/, Images/"_s);
    EXPECT_TRUE(library->unavailable().contains(collection()));
}

} // namespace ludarium::test
