#pragma once

#include "Services/Library/GameFamily.h"

#include <QString>
#include <algorithm>
#include <array>
#include <stdexcept>

namespace ludarium {

/// Which folders of a collection cannot be looked at just now: a drive that is unplugged, a share that is not mounted.
/// What lies there is unknown, which is not the same as gone. A folder that was removed from a collection that is there
/// is gone.
struct CollectionPresence {
    /// Why the collection itself cannot be looked at, naming its folder; null when it can.
    QString collection;
    /// It is there and holds other things than a collection.
    bool holdsOther = false;
    /// The same for the folder of each family of games: not readable, a link to nothing, or empty as a mount point is
    /// (the folder of a set holds its scripts at least).
    std::array<QString, gameFamilyCount> families;

    bool isAway() const { return !collection.isNull(); }
    /// Null when the games of a platform can be looked for.
    const QString &reasonFor(GameFamily family) const { return families[static_cast<size_t>(family)]; }

    /// Whether a family's folder cannot be looked at for just this reason.
    bool hasReason(const QString &reason) const {
        return std::find(families.begin(), families.end(), reason) != families.end();
    }

    /// Looks at the disk; for the thread pool.
    static CollectionPresence look(const QString &collection);
};

/// A collection went away while it was being loaded.
class CollectionAway : public std::runtime_error {
  public:
    explicit CollectionAway(const QString &reason) : std::runtime_error(reason.toStdString()), reason(reason) {}
    QString reason;
};

} // namespace ludarium
