#pragma once

#include "Models/AdditionalApplication.h"
#include "Models/EmulatorType.h"
#include "Models/GameProgress.h"

#include <QByteArray>
#include <QDateTime>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

namespace ludarium {

/// A text that may be absent: a null QString is "no value", an empty one is an empty text. Half of a game's fields are
/// of this kind, and std::optional would add eight bytes to each of them in every game of a library.
using OptionalText = QString;

/// A long text kept as UTF-8, which takes half the memory of a QString; null is "no value".
using LongText = QByteArray;

/// One game as the collection describes it, with what the user and the disk add. Identity is `id` alone.
///
/// The serial names in the comments are those of the LaunchBox XML elements and of the JSON cache. Records are filled
/// by `GameDecoder`, then shared as `GamePtr`.
struct Game {
    QString id;                              ///< ID; made from platform, title and path when the input has none
    QString title;                           ///< Title; "Unknown" when missing
    OptionalText sortTitle;                  ///< SortTitle
    QString platform;                        ///< Platform; "MS-DOS" when missing
    std::optional<QDateTime> releaseDate;    ///< ReleaseDate; wall-clock time kept as UTC, see CollectionDate.h
    std::optional<int> releaseYear;          ///< releaseYear, else the year of releaseDate
    OptionalText developer;                  ///< Developer
    OptionalText publisher;                  ///< Publisher
    OptionalText genre;                      ///< Genre
    OptionalText series;                     ///< Series
    OptionalText playMode;                   ///< PlayMode
    std::optional<int> maxPlayers;           ///< MaxPlayers
    std::optional<bool> cooperative;         ///< Cooperative
    LongText notes;                          ///< Notes: the collection's own, as UTF-8
    LongText overview;                       ///< Overview, as UTF-8
    OptionalText rating;                     ///< Rating: an age rating label
    std::optional<double> communityRating;   ///< CommunityStarRating
    std::optional<int> communityRatingCount; ///< CommunityStarRatingTotalVotes
    OptionalText applicationPath;            ///< ApplicationPath, with Windows separators as stored
    OptionalText configurationPath;          ///< ConfigurationPath
    OptionalText commandLine;                ///< CommandLine
    OptionalText rootFolder;                 ///< RootFolder
    OptionalText manualPath;                 ///< ManualPath
    OptionalText musicPath;                  ///< MusicPath
    OptionalText videoPath;                  ///< VideoPath
    std::optional<bool> completed;           ///< Completed
    std::optional<bool> hide;                ///< Hide
    std::optional<bool> broken;              ///< Broken
    std::optional<bool> portable;            ///< Portable
    OptionalText source;                     ///< Source
    OptionalText databaseID;                 ///< DatabaseID
    OptionalText wikipediaURL;               ///< WikipediaURL
    OptionalText videoURL;                   ///< VideoURL; LaunchBox writes it as VideoUrl

    // Set by user data and by the look at the disk, never read from the collection.
    bool isFavorite = false;
    bool isInstalled = false;
    bool isCompressed = false;
    bool isDownloadable = false;
    OptionalText downloadSize; ///< human-readable
    int playCount = 0;
    double playTime = 0; ///< seconds
    std::optional<QDateTime> lastPlayed;
    GameProgress gameProgress = GameProgress::notPlayed;
    std::optional<QDateTime> dateAdded; ///< DateAdded

    // The lower-cased title, sortTitle, developer, publisher, genre and series as UTF-8, so that a search never
    // lower-cases and compares bytes; null where the source has no value. Nothing else is normalised.
    QByteArray searchTitle;
    QByteArray searchSortTitle;
    QByteArray searchDeveloper;
    QByteArray searchPublisher;
    QByteArray searchGenre;
    QByteArray searchSeries;

    std::optional<EmulatorType> requiredEmulatorType;
    OptionalText requiredEmulatorVersion;
    QList<AdditionalApplication> additionalApplications;

    bool operator==(const Game &other) const { return id == other.id; }

    bool isDREAMMGame() const;
    /// 0 to 5: the community rating rounded and clamped, 0 without one.
    int starRating() const;
    /// The folder that `configurationPath` names: the piece before a script, configuration or program file at its
    /// end, else its last piece. Null without a path.
    OptionalText gameFolderName() const;

    QString notesText() const { return QString::fromUtf8(notes); }
    QString overviewText() const { return QString::fromUtf8(overview); }
};

inline size_t qHash(const Game &game, size_t seed = 0) {
    return qHash(game.id, seed);
}

/// Games are shared and never changed in place: a change of one game replaces one pointer.
using GamePtr = std::shared_ptr<const Game>;
using GameList = QList<GamePtr>;

} // namespace ludarium
