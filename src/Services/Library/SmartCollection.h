#pragma once

#include <QList>
#include <QString>

namespace ludarium {

/// A fixed, computed list of games.
struct SmartCollection {
    enum class Kind {
        byGenre,
        byDecade,
        byDeveloper,
        byPublisher,
        unplayed,
        recentlyPlayed,
        mostPlayed,
        highlyRated,
        hasNotes,
        shortGames,
        randomPicks,
        mt32Games,
        installed,
        scummvmGames,
        progressPlaying,
        progressBeaten,
        progressCompleted,
    };
    struct SmartFilter {
        Kind kind = Kind::unplayed;
        QString text;   ///< value of byGenre, byDeveloper and byPublisher
        int decade = 0; ///< value of byDecade
        bool operator==(const SmartFilter &) const = default;
    };

    static constexpr int mostPlayedLimit = 50; ///< at most so many are in mostPlayed
    static constexpr int highRating = 4;       ///< of the user's, from which on a game is highlyRated

    QString id;
    QString name;
    QString icon; ///< name of a symbol
    SmartFilter filter;
    bool operator==(const SmartCollection &) const = default;
};

/// A heading of the sidebar with its collections.
struct SmartCollectionSection {
    QString title;
    QList<SmartCollection> collections;
};

/// The five sections in their order: "Smart Collections", "Studios", "Audio & Tech", "Progress", "Genres".
const QList<SmartCollectionSection> &smartCollectionSections();

/// The collection with this id; null when there is none.
const SmartCollection *smartCollection(const QString &id);

} // namespace ludarium
