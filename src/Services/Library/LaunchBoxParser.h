#pragma once

#include "Models/Game.h"
#include "Models/Platform.h"
#include "Models/Playlist.h"

#include <functional>
#include <stdexcept>

namespace ludarium {

/// A folder of the collection that exists but cannot be listed; `what()` names it and the reason, in UTF-8.
class ParseError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads the LaunchBox XML database of a collection. Stateless, blocking, for the thread pool: never call it on the
/// main thread. Bad files are logged and skipped; only a folder that cannot be listed is an error (ParseError).
///
/// Files are streamed through libxml2 without a document tree and parsed in parallel; results are joined in the order
/// in which the folders list their files. A document with a DOCTYPE counts as not well-formed.
class LaunchBoxParser {
  public:
    /// A human-readable status text; called from the parsing thread.
    using ProgressCallback = std::function<void(const QString &)>;

    struct Games {
        GameList games; ///< without hidden games and repeated ids
        QList<AdditionalApplication> additionalApplications;
    };

    QList<Platform> parsePlatforms(const QString &collection) const;
    Games parseGamesWithAdditionalApps(const QString &collection, const ProgressCallback &progress = {}) const;
    /// Sorted by name.
    QList<Playlist> parsePlaylists(const QString &collection) const;
};

} // namespace ludarium
