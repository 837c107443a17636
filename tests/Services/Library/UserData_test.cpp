#include "Services/Library/UserData.h"

#include "GameFactory.h"
#include "Host/Settings.h"
#include "Host/SqliteSettingsStore.h"
#include "support/TestHost.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ludarium::test {

namespace {

const QString id = QStringLiteral("game");
const QDateTime noon(QDate(2026, 3, 14), QTime(12, 0));

Game apply(const UserData &data) {
    Game game = *makeGame(id, QStringLiteral("T"));
    data.values().applyTo(game);
    return game;
}

} // namespace

TEST(UserData, SurvivesInTheSettings) {
    MemorySettings settings;
    {
        UserData data(settings);
        data.setFavorite(id, true);
        data.recordPlay(id, 0, noon);
        data.addPlayTime(id, 61.5);
        data.setNotes(id, QStringLiteral("Save often"));
        data.setRating(id, 4);
    }
    const UserData again(settings);
    const Game game = apply(again);
    EXPECT_TRUE(game.isFavorite);
    EXPECT_EQ(game.playCount, 1);
    EXPECT_EQ(game.playTime, 61.5);
    EXPECT_EQ(game.lastPlayed, noon);
    EXPECT_EQ(game.gameProgress, GameProgress::playing);
    EXPECT_EQ(again.notes(id), QStringLiteral("Save often"));
    EXPECT_EQ(again.rating(id), 4);
    EXPECT_EQ(again.recentlyPlayedIds(), QStringList{id});
}

TEST(UserData, SetsProgressOnTheFirstPlayOnly) {
    MemorySettings settings;
    UserData data(settings);
    data.setProgress(id, GameProgress::beaten);
    data.recordPlay(id, 0, noon);
    EXPECT_EQ(apply(data).gameProgress, GameProgress::beaten);
    data.setProgress(id, GameProgress::notPlayed);
    data.recordPlay(id, 0, noon);
    EXPECT_EQ(apply(data).gameProgress, GameProgress::notPlayed);
}

TEST(UserData, KeepsTheFiftyNewestPlays) {
    MemorySettings settings;
    UserData data(settings);
    for (int i = 0; i <= UserData::recentLimit; ++i)
        data.recordPlay(QString::number(i), 0, noon);
    data.recordPlay(QStringLiteral("7"), 0, noon);
    EXPECT_EQ(data.recentlyPlayedIds().size(), UserData::recentLimit);
    EXPECT_EQ(data.recentlyPlayedIds().first(), QStringLiteral("7"));
    EXPECT_EQ(data.recentlyPlayedIds().count(QStringLiteral("7")), 1);
    EXPECT_FALSE(data.recentlyPlayedIds().contains(QStringLiteral("0")));
}

TEST(UserData, RemovesEntriesThatSayNothing) {
    MemorySettings settings;
    UserData data(settings);
    data.setNotes(id, QStringLiteral("x"));
    data.setNotes(id, QString());
    data.setRating(id, 5);
    data.setRating(id, 6);
    EXPECT_TRUE(settings.value(Settings::gameNotes).isEmpty());
    EXPECT_TRUE(settings.value(Settings::gameRatings).isEmpty());
    data.addPlayTime(id, -5);
    EXPECT_EQ(data.playTime(id), 0);
}

TEST(UserData, KeepsAValueOfAnUnexpectedTypeAside) {
    MemorySettings settings;
    settings.setRawValue(QStringLiteral("playCounts"), QStringLiteral("not a map"));
    UserData data(settings);
    data.recordPlay(id, 0, noon);
    EXPECT_EQ(data.playCount(id), 1);
    const QStringList aside = settings.keys().filter(QStringLiteral("playCounts.corrupt-"));
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(settings.rawValue(aside.first()).toString(), QStringLiteral("not a map"));
}

TEST(UserData, IgnoresProgressNumbersThatNobodyKnows) {
    MemorySettings settings;
    settings.setEntry(Settings::gameProgress, id, qint64(9));
    EXPECT_EQ(apply(UserData(settings)).gameProgress, GameProgress::notPlayed);
}

TEST(UserData, AddsToWhatAnotherProcessWrote) {
    MemorySettings settings;
    UserData mine(settings);
    UserData theirs(settings);
    int notices = 0;
    QObject::connect(&mine, &UserData::changedElsewhere, &mine, [&] { ++notices; });
    settings.setValue(Settings::viewMode, QStringLiteral("List"));
    EXPECT_EQ(notices, 0) << "other settings are no user data";
    theirs.setFavorite(QStringLiteral("theirs"), true);
    EXPECT_EQ(notices, 1);
    theirs.setProgress(id, GameProgress::beaten);
    Game game = apply(mine);
    theirs.setProgress(id, GameProgress::notPlayed);
    EXPECT_TRUE(mine.values().differsFrom(game));
    mine.values().applyTo(game);
    EXPECT_EQ(game.gameProgress, GameProgress::notPlayed);
    mine.setFavorite(QStringLiteral("mine"), true);
    EXPECT_EQ(settings.value(Settings::favoriteGames).size(), 2);
}

/// Two programs on one store: what each changes last read long ago is no reason to write it back.
TEST(UserData, ChangesWhatTheStoreHoldsAndNotItsOwnCopy) {
    const QTemporaryDir folder;
    SqliteSettingsStore one(folder.path());
    SqliteSettingsStore other(folder.path());
    UserData mine(one);
    UserData theirs(other);
    const auto a = QStringLiteral("a");
    const auto b = QStringLiteral("b");
    theirs.setFavorite(a, true);
    mine.setFavorite(b, true);
    theirs.recordPlay(a, 10, noon);
    mine.recordPlay(a, 20, noon);
    theirs.addPlayTime(a, 5);
    mine.addPlayTime(a, 7);
    theirs.recordPlay(b, 0, noon);
    mine.setFavorites({a, b, QStringLiteral("c")}, true);
    theirs.setFavorites({b}, false);
    mine.recordPlay(QStringLiteral("c"), 1, noon);

    const UserData kept(other);
    EXPECT_EQ(kept.favoriteIds(), (QSet<QString>{a, QStringLiteral("c")}));
    EXPECT_EQ(kept.playCount(a), 2);
    EXPECT_EQ(kept.playTime(a), 42);
    EXPECT_EQ(kept.recentlyPlayedIds(), (QStringList{QStringLiteral("c"), b, a}));
    // And each hears of the other's changes.
    QCoreApplication::processEvents();
    EXPECT_EQ(mine.values(), kept.values());
}

TEST(UserData, LeavesMemoryAsItWasWhenTheStoreCannotKeepAChange) {
    class FullSettings : public MemorySettings {
      public:
        bool full = false;
        void transaction(const std::function<void()> &changes) override {
            if (full)
                throw std::runtime_error("disk full");
            MemorySettings::transaction(changes);
        }
    } settings;
    UserData data(settings);
    settings.full = true;
    EXPECT_THROW(data.setFavorite(id, true), std::runtime_error);
    EXPECT_THROW(data.recordPlay(id, 0, noon), std::runtime_error);
    EXPECT_TRUE(data.favoriteIds().isEmpty());
    EXPECT_EQ(data.playCount(id), 0);
    settings.full = false;
    data.setFavorite(id, true);
    EXPECT_TRUE(data.favoriteIds().contains(id));
}

} // namespace ludarium::test
