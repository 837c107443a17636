#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace ludarium {

/// One rule of a dynamic playlist.
struct PlaylistFilter {
    QString value;                                     ///< Value; null when absent
    QString fieldKey;                                  ///< FieldKey; empty when missing
    QString comparisonType = QStringLiteral("Equals"); ///< ComparisonTypeKey
    bool operator==(const PlaylistFilter &) const = default;
};

/// The link of a game to a playlist in the XML.
struct PlaylistGame {
    QString gameId;
    QString playlistId;
    std::optional<int> order; ///< ManualOrder
    bool operator==(const PlaylistGame &) const = default;
};

/// A named list of games: dynamic when `autoPopulate`, else static. Identity is `id`.
struct Playlist {
    QString id;          ///< PlaylistId; a new UUID when missing
    QString name;        ///< Name; "Unnamed Playlist" when missing
    QString description; ///< Notes; null when absent
    std::optional<int> sortOrder;
    QStringList gameIds;
    QStringList nestedPlaylistIds;
    bool autoPopulate = false;
    QList<PlaylistFilter> filters;
    bool operator==(const Playlist &other) const { return id == other.id; }
};

} // namespace ludarium
