#pragma once

#include "Models/Game.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

namespace ludarium {

/// Everything that the statistics window shows, computed from the play data of the games; no history of sessions is
/// kept. Days are those of the local calendar.
struct PlayStatistics {
    struct Share {
        QString name;
        double seconds = 0;
        bool operator==(const Share &) const = default;
    };
    struct Ranked {
        int rank = 0; ///< from 1
        GamePtr game;
    };
    struct Day {
        QDate date;
        double hours = 0;
    };

    double totalPlayTime = 0; ///< seconds
    int gamesPlayed = 0;
    int gamesInstalled = 0;
    int favorites = 0;
    double averageSessionLength = 0; ///< seconds
    QList<Share> platformPlayTime;   ///< longest first
    QList<Share> genrePlayTime;      ///< longest first; the whole text of the field, "Unknown" without one
    QList<Ranked> mostPlayedGames;   ///< at most 10
    QList<Day> playHistory;          ///< the last 30 days up to today
    int currentStreak = 0;           ///< days
    int longestStreak = 0;           ///< days
    int daysPlayedThisMonth = 0;

    /// Number of entries that the charts of platforms and genres take.
    static constexpr int chartLength = 8;

    static PlayStatistics compute(const GameList &games, const QDateTime &now);
};

} // namespace ludarium
