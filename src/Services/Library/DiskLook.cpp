#include "Services/Library/DiskLook.h"

#include "Services/Library/CollectionPresence.h"
#include "Services/Library/LoadedRecords.h"
#include "Services/Library/MetadataIndexes.h"

#include <algorithm>

namespace ludarium {

DiskLook DiskLook::take(const LibraryServices &services, const GameList &games, const QString &collection,
                        const std::function<GameStatus(const Game &)> &known) {
    DiskLook result;
    CollectionPresence presence = CollectionPresence::look(collection);
    if (!presence.isAway()) {
        result.statuses = services.checkStatus(games, collection);
        // It may have gone while it was being looked at.
        presence = CollectionPresence::look(collection);
    }
    if (presence.isAway())
        return {{}, presence.collection, true};
    if (std::all_of(presence.families.begin(), presence.families.end(), [](const QString &r) { return r.isNull(); }))
        return result;

    PlatformTest isROM(&Platform::isRetroArchPlatformName);
    PlatformTest isContent(&isContentPlatform);
    for (qsizetype i = 0; i < games.size(); ++i) {
        const Game &game = *games[i];
        const QString &reason = presence.reasonFor(gameFamily(game.platform));
        if (reason.isNull() || isROM(game.platform) || isContent(game.platform))
            continue;
        const GameStatus seen = known(game);
        if (!seen.isInstalled && !seen.isCompressed)
            continue;
        if (result.statuses[i].isInstalled || result.statuses[i].isCompressed)
            continue; // found in another place
        result.statuses[i] = seen;
        result.unavailable = reason;
    }
    return result;
}

} // namespace ludarium
