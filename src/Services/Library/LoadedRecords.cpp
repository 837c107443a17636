#include "Services/Library/LoadedRecords.h"

#include <algorithm>

namespace ludarium {

Game &changeable(GamePtr &game) {
    if (game.use_count() != 1)
        game = std::make_shared<Game>(*game);
    return const_cast<Game &>(*game);
}

qsizetype refreshRecords(GameList &games, const QHash<QString, qsizetype> &positions, const SeenStatuses &seen,
                         const UserData::Values &user) {
    std::vector<bool> changed(static_cast<size_t>(games.size()));
    const auto change = [&](qsizetype at) -> Game & {
        changed[static_cast<size_t>(at)] = true;
        return changeable(games[at]);
    };
    const auto changeById = [&](const QString &id, const auto &set) {
        if (const auto at = positions.constFind(id); at != positions.cend())
            set(change(*at));
    };
    PlatformTest isROM(&Platform::isRetroArchPlatformName);
    PlatformTest isContent(&isContentPlatform);
    for (auto it = seen.downloadable.cbegin(); it != seen.downloadable.cend(); ++it)
        changeById(it.key(), [&](Game &game) {
            game.isDownloadable = true;
            game.downloadSize = it.value();
        });
    const auto noDownload = [](Game &game) {
        game.isDownloadable = false;
        game.downloadSize = QString();
    };
    for (const QString &id : seen.compressed)
        changeById(id, [&](Game &game) {
            noDownload(game);
            game.isCompressed = !isContent(game.platform);
        });
    for (const QString &id : seen.installed)
        changeById(id, [&](Game &game) {
            noDownload(game);
            game.isInstalled = true;
            game.isCompressed = false;
        });
    for (qsizetype i = 0; i < games.size(); ++i)
        if (isROM(games[i]->platform) || isContent(games[i]->platform))
            change(i).isInstalled = true;
    user.forEachId([&](const QString &id) { changeById(id, [&](Game &game) { user.applyTo(game); }); });
    return std::count(changed.begin(), changed.end(), true);
}

void associateAdditionalApplications(GameList &games, const QList<AdditionalApplication> &applications) {
    QHash<QString, QList<AdditionalApplication>> byGame;
    for (const AdditionalApplication &application : applications)
        byGame[application.gameId].append(application);
    for (GamePtr &game : games)
        if (const auto found = byGame.find(game->id); found != byGame.end()) {
            for (AdditionalApplication &application : *found)
                application.gameId = game->id; // the same text, held once
            changeable(game).additionalApplications = *found;
        }
}

} // namespace ludarium
