#include "Services/Library/PlayStatistics.h"

#include "GameFactory.h"

#include <QTimeZone>
#include <gtest/gtest.h>
#include <time.h>

namespace ludarium::test {

namespace {

QDateTime at(int month, int day, int hour = 12) {
    return QDateTime(QDate(2026, month, day), QTime(hour, 0));
}

GamePtr played(const char *id, const QDateTime &last, int count, double seconds, const char *platform = "MS-DOS") {
    return makeGame(QString::fromUtf8(id), QString::fromUtf8(id), QString::fromUtf8(platform), [&](Game &game) {
        game.lastPlayed = last;
        game.playCount = count;
        game.playTime = seconds;
    });
}

} // namespace

TEST(PlayStatistics, OfALibraryThatWasNeverPlayedAreZero) {
    const PlayStatistics none =
        PlayStatistics::compute({makeGame(QStringLiteral("a"), QStringLiteral("A"))}, at(3, 14));
    EXPECT_EQ(none.totalPlayTime, 0);
    EXPECT_EQ(none.averageSessionLength, 0);
    EXPECT_EQ(none.currentStreak, 0);
    EXPECT_EQ(none.longestStreak, 0);
    EXPECT_TRUE(none.platformPlayTime.isEmpty());
    ASSERT_EQ(none.playHistory.size(), 30);
    EXPECT_EQ(none.playHistory.first().date, QDate(2026, 2, 13));
    EXPECT_EQ(none.playHistory.last().date, QDate(2026, 3, 14));
}

TEST(PlayStatistics, AddUpTimesAndRankGames) {
    auto unnamed = std::make_shared<Game>(*played("c", at(3, 13), 1, 1800));
    unnamed->genre = QStringLiteral(""); // an empty element is no genre either
    const PlayStatistics stats =
        PlayStatistics::compute({played("a", at(3, 14), 4, 7200), played("b", at(3, 13), 1, 1800, "ScummVM"), unnamed,
                                 played("d", at(1, 2), 0, 0)},
                                at(3, 14));
    EXPECT_EQ(stats.totalPlayTime, 10800);
    EXPECT_EQ(stats.gamesPlayed, 3);
    EXPECT_EQ(stats.averageSessionLength, 1800);
    EXPECT_EQ(stats.platformPlayTime,
              (QList<PlayStatistics::Share>{{QStringLiteral("MS-DOS"), 9000}, {QStringLiteral("ScummVM"), 1800}}));
    EXPECT_EQ(stats.genrePlayTime, (QList<PlayStatistics::Share>{{QStringLiteral("Unknown"), 10800}}));
    ASSERT_EQ(stats.mostPlayedGames.size(), 3);
    EXPECT_EQ(stats.mostPlayedGames[1].rank, 2);
    EXPECT_EQ(stats.mostPlayedGames[1].game->id, QStringLiteral("b"));
    // The mean session of each game counts for its last day: 7200 / 4 seconds today, twice 1800 yesterday.
    EXPECT_DOUBLE_EQ(stats.playHistory.last().hours, 0.5);
    EXPECT_DOUBLE_EQ(stats.playHistory[28].hours, 1.0);
    EXPECT_EQ(stats.daysPlayedThisMonth, 2);
}

TEST(PlayStatistics, CountStreaksInCalendarDaysAcrossDaylightSaving) {
    // A zone in which 2026-03-29 has 23 hours and 2026-10-25 has 25.
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    tzset();
    GameList spring;
    for (int day = 27; day <= 31; ++day)
        spring.append(played(qPrintable(QString::number(day)), at(3, day, day == 29 ? 23 : 0), 1, 60));
    const PlayStatistics toLast = PlayStatistics::compute(spring, at(3, 31, 0));
    const PlayStatistics dayAfter = PlayStatistics::compute(spring, at(4, 1, 0));
    GameList autumn{played("x", at(10, 24, 23), 1, 60), played("y", at(10, 25, 23), 1, 60),
                    played("z", at(10, 26, 0), 1, 60), played("w", at(10, 28), 1, 60)};
    const PlayStatistics gap = PlayStatistics::compute(autumn, at(10, 28));
    const QDateTime storedInUtc(QDate(2026, 10, 24), QTime(22, 30), Qt::UTC); // half past midnight there
    const PlayStatistics utc = PlayStatistics::compute({played("u", storedInUtc, 1, 3600)}, at(11, 23, 1));
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    tzset();

    EXPECT_EQ(toLast.currentStreak, 5);
    EXPECT_EQ(dayAfter.currentStreak, 0);
    EXPECT_EQ(dayAfter.longestStreak, 5);
    EXPECT_EQ(gap.currentStreak, 1);
    EXPECT_EQ(gap.longestStreak, 3);
    // The longer day is one day of the history, and an instant counts for the day that it was where it was played.
    ASSERT_EQ(utc.playHistory.size(), 30);
    EXPECT_EQ(utc.playHistory.first().date, QDate(2026, 10, 25));
    EXPECT_EQ(utc.playHistory.first().hours, 1);
}

} // namespace ludarium::test
