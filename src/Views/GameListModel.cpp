#include "Views/GameListModel.h"

#include "Views/CoverStore.h"
#include "Views/TitleArt.h"

#include <algorithm>

namespace ludarium {

GameListModel::GameListModel(std::shared_ptr<CoverStore> covers, QObject *parent)
    : QAbstractListModel(parent), m_covers(std::move(covers)) {}

int GameListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant GameListModel::data(const QModelIndex &index, int role) const {
    const GamePtr shown = game(index.row());
    if (!shown)
        return {};
    switch (role) {
    case idRole:
        return shown->id;
    case Qt::DisplayRole:
    case titleRole:
        return shown->title;
    case platformRole:
        return shown->platform;
    case yearRole:
        return shown->releaseYear ? QString::number(*shown->releaseYear) : QString();
    case developerRole:
        return shown->developer;
    case genreRole:
        return shown->genre;
    case coverRole:
        return m_covers->url(shown);
    case initialsRole:
        return titleInitials(shown->title);
    case hueRole:
        return titleHue(shown->title);
    case favoriteRole:
        return shown->isFavorite;
    case installedRole:
        return shown->isInstalled;
    default:
        return {};
    }
}

QHash<int, QByteArray> GameListModel::roleNames() const {
    return {{idRole, "gameId"},         {titleRole, "title"},         {platformRole, "platform"},
            {yearRole, "year"},         {developerRole, "developer"}, {genreRole, "genre"},
            {coverRole, "cover"},       {initialsRole, "initials"},   {hueRole, "hue"},
            {favoriteRole, "favorite"}, {installedRole, "installed"}};
}

GamePtr GameListModel::game(int row) const {
    return row >= 0 && row < m_games.size() ? m_games[row] : GamePtr();
}

void GameListModel::renewCovers() {
    if (!m_games.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {coverRole});
}

int GameListModel::rowOf(const QString &gameId) const {
    const auto found =
        std::find_if(m_games.begin(), m_games.end(), [&](const GamePtr &game) { return game->id == gameId; });
    return found == m_games.end() ? -1 : int(found - m_games.begin());
}

bool GameListModel::hasSameGames(const GameList &games) const {
    return std::equal(games.begin(), games.end(), m_games.begin(), m_games.end(),
                      [](const GamePtr &a, const GamePtr &b) { return a == b || a->id == b->id; });
}

void GameListModel::setGames(GameList games) {
    if (!hasSameGames(games)) {
        beginResetModel();
        m_games = std::move(games);
        endResetModel();
        Q_EMIT countChanged();
        return;
    }
    const GameList old = std::exchange(m_games, std::move(games));
    for (int row = 0; row < m_games.size(); ++row) {
        if (m_games[row] == old[row])
            continue;
        const int first = row;
        while (row + 1 < m_games.size() && m_games[row + 1] != old[row + 1])
            ++row;
        Q_EMIT dataChanged(index(first), index(row));
    }
}

} // namespace ludarium
