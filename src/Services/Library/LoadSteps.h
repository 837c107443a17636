#pragma once

#include "Services/Library/GameLibrary.h"

#include <QElapsedTimer>
#include <QPointer>

namespace ludarium {

/// What is kept of a collection from its last load.
struct GameLibrary::Opened {
    SeenStatuses seen;
    std::optional<CachedCollectionData> cached;
};

/// The library was destroyed while its load was waiting for something.
struct Abandoned {};

/// To be called after every wait of a step, before the library is touched again.
inline void requireAlive(const QPointer<GameLibrary> &library) {
    if (!library)
        throw Abandoned();
}

inline QString milliseconds(const QElapsedTimer &timer) {
    return QStringLiteral("%1ms").arg(timer.elapsed());
}

} // namespace ludarium
