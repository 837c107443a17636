#pragma once

#include "Models/Game.h"
#include "Models/GameDecoder.h"
#include "Models/TextPool.h"

#include <QString>
#include <functional>

namespace ludarium::test {

/// A game as the parser would make it, then changed by hand.
inline GamePtr makeGame(const QString &id, const QString &title, const QString &platform = QStringLiteral("MS-DOS"),
                        const std::function<void(Game &)> &change = {}) {
    TextPool pool;
    GameDecoder decoder(pool);
    decoder.set("ID", id.toStdString());
    decoder.set("Title", title.toStdString());
    decoder.set("Platform", platform.toStdString());
    auto game = std::make_shared<Game>(*decoder.finish());
    if (change) {
        change(*game);
        const auto lower = [](const QString &text) { return text.isNull() ? QByteArray() : text.toLower().toUtf8(); };
        game->searchSortTitle = lower(game->sortTitle);
        game->searchDeveloper = lower(game->developer);
        game->searchPublisher = lower(game->publisher);
        game->searchGenre = lower(game->genre);
        game->searchSeries = lower(game->series);
    }
    return game;
}

inline QStringList idsOf(const GameList &games) {
    QStringList ids;
    for (const GamePtr &game : games)
        ids.append(game->id);
    return ids;
}

} // namespace ludarium::test
