#include "Cli/LoadReport.h"

#include "Services/Library/GameLibrary.h"

#include <nlohmann/json.hpp>

namespace ludarium {

FieldList loadFields(const GameLibrary &library, qint64 milliseconds) {
    FieldList fields;
    fields.add(QStringLiteral("Games"), QString::number(library.games().size()));
    fields.add(QStringLiteral("Platforms"), QString::number(library.platforms().size()));
    fields.add(QStringLiteral("Playlists"), QString::number(library.playlists().size()));
    fields.add(QStringLiteral("From cache"), library.loadedFromCache() ? QStringLiteral("yes") : QStringLiteral("no"));
    fields.add(QStringLiteral("Time"), QStringLiteral("%1 ms").arg(milliseconds));
    return fields;
}

void addLoadMembers(Json &document, const GameLibrary &library, qint64 milliseconds) {
    document["gameCount"] = library.games().size();
    document["platformCount"] = library.platforms().size();
    document["playlistCount"] = library.playlists().size();
    document["fromCache"] = library.loadedFromCache();
    document["milliseconds"] = milliseconds;
}

} // namespace ludarium
