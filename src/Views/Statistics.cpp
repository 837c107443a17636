#include "Views/Statistics.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Models/PlayTime.h"
#include "Services/Library/GameLibrary.h"

#include <QLocale>
#include <QPointer>
#include <QVariantMap>
#include <algorithm>

namespace ludarium {

namespace {

// Changes come in bursts while a library loads.
constexpr int pauseMilliseconds = 150;

QVariantMap figure(const char *icon, const QString &label, const QString &value) {
    return {{QStringLiteral("icon"), QString::fromLatin1(icon)},
            {QStringLiteral("label"), label},
            {QStringLiteral("value"), value}};
}

} // namespace

Statistics::Statistics(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(pauseMilliseconds);
    connect(&m_soon, &QTimer::timeout, this, [this] { spawn(compute(), "working out the statistics"); });
    connect(&state.gameLibrary(), &GameLibrary::gamesChanged, this, [this] {
        if (m_watching)
            m_soon.start();
    });
}

void Statistics::setWatching(bool watching) {
    if (std::exchange(m_watching, watching) == watching)
        return;
    if (watching)
        spawn(compute(), "working out the statistics");
    else
        m_soon.stop();
    Q_EMIT watchingChanged();
}

QStringList Statistics::ranges() const {
    return {QStringLiteral("This Week"), QStringLiteral("This Month"), QStringLiteral("This Year"),
            QStringLiteral("All Time")};
}

void Statistics::setRange(const QString &range) {
    if (range == m_range || !ranges().contains(range))
        return;
    m_range = range;
    Q_EMIT changed();
    spawn(compute(), "working out the statistics");
}

QDate Statistics::firstDay(const QString &range, QDate today) {
    if (range == QLatin1StringView("This Week"))
        return today.addDays(-((today.dayOfWeek() - QLocale().firstDayOfWeek() + 7) % 7));
    if (range == QLatin1StringView("This Month"))
        return QDate(today.year(), today.month(), 1);
    if (range == QLatin1StringView("This Year"))
        return QDate(today.year(), 1, 1);
    return {};
}

QCoro::Task<> Statistics::compute() {
    const QPointer<Statistics> self(this);
    const int run = ++m_run;
    const GameList games = m_state.gameLibrary().games();
    const QDateTime now = m_state.host().clock.now();
    const QDate first = firstDay(m_range, now.toLocalTime().date());
    auto work = [games, now, first] {
        PlayStatistics whole = PlayStatistics::compute(games, now);
        if (!first.isValid())
            return std::pair(whole, whole);
        GameList within = games;
        within.removeIf(
            [&](const GamePtr &game) { return !game->lastPlayed || game->lastPlayed->toLocalTime().date() < first; });
        return std::pair(whole, PlayStatistics::compute(within, now));
    };
    auto [whole, ranged] = co_await runOnPool(work);
    if (!self || run != m_run)
        co_return;
    m_whole = std::move(whole);
    m_ranged = std::move(ranged);
    m_ready = true;
    Q_EMIT changed();
}

QVariantList Statistics::cards() const {
    const QLocale locale;
    return {figure("clock.fill", QStringLiteral("Total Play Time"), formatPlayTime(m_whole.totalPlayTime)),
            figure("gamecontroller.fill", QStringLiteral("Games Played"), locale.toString(m_whole.gamesPlayed)),
            figure("internaldrive.fill", QStringLiteral("Games Installed"), locale.toString(m_whole.gamesInstalled)),
            figure("heart.fill", QStringLiteral("Favorites"), locale.toString(m_whole.favorites))};
}

QString Statistics::averageSession() const {
    return formatPlayTime(m_whole.averageSessionLength);
}

QVariantList Statistics::shares(const QList<PlayStatistics::Share> &list) {
    QVariantList result;
    for (const PlayStatistics::Share &share : list.first(std::min<qsizetype>(list.size(), PlayStatistics::chartLength)))
        result.append(QVariantMap{{QStringLiteral("name"), share.name},
                                  {QStringLiteral("text"), formatPlayTime(share.seconds)},
                                  {QStringLiteral("share"), share.seconds / list.first().seconds}});
    return result;
}

QVariantList Statistics::mostPlayed() const {
    QVariantList result;
    for (const PlayStatistics::Ranked &ranked : m_ranged.mostPlayedGames)
        result.append(QVariantMap{{QStringLiteral("rank"), ranked.rank},
                                  {QStringLiteral("id"), ranked.game->id},
                                  {QStringLiteral("title"), ranked.game->title},
                                  {QStringLiteral("platform"), ranked.game->platform},
                                  {QStringLiteral("text"), formatPlayTime(ranked.game->playTime)}});
    return result;
}

double Statistics::longestDay() const {
    double longest = 0;
    for (const PlayStatistics::Day &day : m_whole.playHistory)
        longest = std::max(longest, day.hours);
    return longest;
}

QVariantList Statistics::history() const {
    const QLocale locale;
    const double longest = longestDay();
    QVariantList result;
    for (const PlayStatistics::Day &day : m_whole.playHistory)
        result.append(QVariantMap{{QStringLiteral("day"), locale.toString(day.date, QLocale::ShortFormat)},
                                  {QStringLiteral("text"), formatPlayTime(day.hours * 3600)},
                                  {QStringLiteral("share"), longest > 0 ? day.hours / longest : 0.0}});
    return result;
}

QVariantList Statistics::streaks() const {
    const QLocale locale;
    return {figure("flame.fill", QStringLiteral("Current Streak"), locale.toString(m_whole.currentStreak)),
            figure("trophy.fill", QStringLiteral("Longest Streak"), locale.toString(m_whole.longestStreak)),
            figure("calendar", QStringLiteral("This Month"), locale.toString(m_whole.daysPlayedThisMonth))};
}

} // namespace ludarium
