#pragma once

#include "Models/ViewSettings.h"

#include <QString>
#include <optional>

namespace ludarium {

/// What the main view is narrowed to. Empty texts are no filter.
struct BrowseQuery {
    QString search;
    QString platform;
    QString playlistId;
    QString smartCollectionId;
    QString genre;
    QString developer;
    QString publisher;
    std::optional<int> year;
    bool favoritesOnly = false;
    bool installedOnly = false;
    bool recentlyPlayed = false; ///< the recent list as it stands; nothing else applies
    SortOrder sortOrder = SortOrder::title;

    bool operator==(const BrowseQuery &) const = default;
};

} // namespace ludarium
