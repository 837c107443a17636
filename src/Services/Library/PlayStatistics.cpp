#include "Services/Library/PlayStatistics.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace ludarium {

namespace {

constexpr int historyDays = 30;
constexpr int rankedGames = 10;

QList<PlayStatistics::Share> sortedShares(const QHash<QString, double> &seconds) {
    QList<PlayStatistics::Share> shares;
    for (auto it = seconds.cbegin(); it != seconds.cend(); ++it)
        shares.append({it.key(), it.value()});
    // Equal times by name, so that a chart does not change its order from one drawing to the next.
    std::sort(shares.begin(), shares.end(), [](const auto &a, const auto &b) {
        return a.seconds != b.seconds ? a.seconds > b.seconds : a.name < b.name;
    });
    return shares;
}

int streakUpTo(QDate day, const QSet<QDate> &played) {
    int days = 0;
    for (; played.contains(day); day = day.addDays(-1))
        ++days;
    return days;
}

int longestRun(const QSet<QDate> &played) {
    int best = 0;
    for (const QDate &day : played)
        if (!played.contains(day.addDays(1)))
            best = std::max(best, streakUpTo(day, played));
    return best;
}

} // namespace

PlayStatistics PlayStatistics::compute(const GameList &games, const QDateTime &now) {
    PlayStatistics result;
    const QDate today = now.toLocalTime().date();
    const QDate firstOfMonth(today.year(), today.month(), 1);
    qint64 plays = 0;
    QHash<QString, double> byPlatform;
    QHash<QString, double> byGenre;
    QHash<QDate, double> byDay;
    QSet<QDate> played;
    QList<GamePtr> timed;
    for (const GamePtr &game : games) {
        result.totalPlayTime += game->playTime;
        plays += game->playCount;
        result.gamesPlayed += game->playCount >= 1;
        result.gamesInstalled += game->isInstalled;
        result.favorites += game->isFavorite;
        const QDate lastDay = game->lastPlayed ? game->lastPlayed->toLocalTime().date() : QDate();
        if (lastDay.isValid())
            played.insert(lastDay);
        if (game->playTime > 0) {
            byPlatform[game->platform] += game->playTime;
            byGenre[game->genre.isEmpty() ? QStringLiteral("Unknown") : game->genre] += game->playTime;
            timed.append(game);
            if (lastDay.isValid())
                byDay[lastDay] += game->playTime / std::max(game->playCount, 1);
        }
    }
    if (plays >= 1)
        result.averageSessionLength = result.totalPlayTime / static_cast<double>(plays);
    result.platformPlayTime = sortedShares(byPlatform);
    result.genrePlayTime = sortedShares(byGenre);

    std::stable_sort(timed.begin(), timed.end(),
                     [](const GamePtr &a, const GamePtr &b) { return a->playTime > b->playTime; });
    for (int i = 0; i < std::min<int>(rankedGames, static_cast<int>(timed.size())); ++i)
        result.mostPlayedGames.append({i + 1, timed[i]});
    for (int i = historyDays - 1; i >= 0; --i) {
        const QDate day = today.addDays(-i);
        result.playHistory.append({day, byDay.value(day) / 3600.0});
    }
    result.currentStreak = streakUpTo(today, played);
    result.longestStreak = longestRun(played);
    result.daysPlayedThisMonth = static_cast<int>(
        std::count_if(played.cbegin(), played.cend(), [&](const QDate &day) { return day >= firstOfMonth; }));
    return result;
}

} // namespace ludarium
