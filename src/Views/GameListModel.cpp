#include "Views/GameListModel.h"

#include "Views/CoverStore.h"
#include "Views/GameTexts.h"
#include "Views/TitleArt.h"

#include <algorithm>
#include <numeric>

namespace ludarium {

namespace {

/// The first row that holds, looked for at `hint` first: most searches are for a row that is already known.
template<typename List, typename Test>
int find(const List &list, int hint, const Test &test) {
    if (hint >= 0 && hint < list.size() && test(list[hint]))
        return hint;
    const auto found = std::find_if(list.begin(), list.end(), test);
    return found == list.end() ? -1 : int(found - list.begin());
}

} // namespace

GameListModel::GameListModel(std::shared_ptr<CoverStore> covers, QObject *parent)
    : QAbstractListModel(parent), m_covers(std::move(covers)) {}

int GameListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant GameListModel::data(const QModelIndex &index, int role) const {
    const GamePtr shown = game(index.row());
    if (!shown)
        return {};
    const auto any = [&](const auto &test) {
        const GameList games = variants(index.row());
        return std::any_of(games.begin(), games.end(), test);
    };
    const auto sum = [&](auto Game::*field) {
        const GameList games = variants(index.row());
        return std::accumulate(games.begin(), games.end(), std::decay_t<decltype((*shown).*field)>(),
                               [&](auto total, const GamePtr &game) { return total + (*game).*field; });
    };
    switch (role) {
    case idRole:
        return shown->id;
    case Qt::DisplayRole:
    case titleRole:
        return shown->title;
    case platformRole:
        return m_grouped ? platformsText(m_groups[index.row()]) : shown->platform;
    case yearRole:
        return shown->releaseYear ? QString::number(*shown->releaseYear) : QString();
    case developerRole:
        return shown->developer;
    case genreRole:
        return shown->genre;
    case ratingRole:
        return ratingText(*shown);
    case playCountRole:
        return playCountText(sum(&Game::playCount));
    case lastPlayedRole:
        return dateText(m_grouped ? m_groups[index.row()].lastPlayed() : shown->lastPlayed);
    case playTimeRole:
        return playTimeText(sum(&Game::playTime));
    case statusRole:
        return statusText(variants(index.row()), isRunning(index.row()));
    case coverRole:
        return m_covers->url(shown);
    case initialsRole:
        return titleInitials(shown->title);
    case hueRole:
        return titleHue(shown->title);
    case favoriteRole:
        return any([](const GamePtr &game) { return game->isFavorite; });
    case variantsRole:
        return m_grouped ? int(m_groups[index.row()].variants.size()) : 1;
    case badgesRole:
        return coverBadges(variants(index.row()), isRunning(index.row()));
    case spokenRole:
        return spokenText(shown->title, data(index, platformRole).toString(), variants(index.row()),
                          isRunning(index.row()));
    default:
        return {};
    }
}

QHash<int, QByteArray> GameListModel::roleNames() const {
    return {{idRole, "gameId"},
            {titleRole, "title"},
            {platformRole, "platform"},
            {yearRole, "year"},
            {developerRole, "developer"},
            {genreRole, "genre"},
            {ratingRole, "rating"},
            {playCountRole, "playCount"},
            {lastPlayedRole, "lastPlayed"},
            {playTimeRole, "playTime"},
            {statusRole, "status"},
            {coverRole, "cover"},
            {initialsRole, "initials"},
            {hueRole, "hue"},
            {favoriteRole, "favorite"},
            {variantsRole, "variants"},
            {badgesRole, "badges"},
            {spokenRole, "spoken"}};
}

GamePtr GameListModel::game(int row) const {
    if (row < 0 || row >= count())
        return {};
    return m_grouped ? m_groups[row].primaryVariant : m_games[row];
}

GameList GameListModel::variants(int row) const {
    if (row < 0 || row >= count())
        return {};
    return m_grouped ? m_groups[row].variants : GameList{m_games[row]};
}

bool GameListModel::isRunning(int row) const {
    const GameList games = m_isRunning ? variants(row) : GameList();
    return std::any_of(games.begin(), games.end(), [this](const GamePtr &game) { return m_isRunning(game->id); });
}

void GameListModel::renewRunning() {
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {statusRole, badgesRole, spokenRole});
}

void GameListModel::renewCovers() {
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {coverRole});
}

int GameListModel::rowOf(const QString &gameId, int hint) const {
    return find(m_games, hint, [&](const GamePtr &game) { return game->id == gameId; });
}

int GameListModel::rowOfGroup(const QString &normalizedTitle, int hint) const {
    return find(m_groups, hint, [&](const GameGroup &group) { return group.normalizedTitle == normalizedTitle; });
}

void GameListModel::setGames(GameList games) {
    replace(
        m_games, std::move(games), false, [](const GamePtr &a, const GamePtr &b) { return a == b || a->id == b->id; },
        [](const GamePtr &a, const GamePtr &b) { return a == b; });
}

void GameListModel::setGroups(QList<GameGroup> groups) {
    replace(
        m_groups, std::move(groups), true,
        [](const GameGroup &a, const GameGroup &b) { return a.normalizedTitle == b.normalizedTitle; },
        [](const GameGroup &a, const GameGroup &b) {
            return a.primaryVariant == b.primaryVariant && a.variants == b.variants;
        });
}

template<typename List, typename Same, typename Unchanged>
void GameListModel::replace(List &shown, List list, bool grouped, const Same &isSame, const Unchanged &isUnchanged) {
    if (m_grouped != grouped || !std::equal(list.begin(), list.end(), shown.begin(), shown.end(), isSame)) {
        beginResetModel();
        m_games.clear();
        m_groups.clear();
        m_grouped = grouped;
        shown = std::move(list);
        endResetModel();
        Q_EMIT countChanged();
        return;
    }
    const List old = std::exchange(shown, std::move(list));
    for (qsizetype row = 0; row < old.size(); ++row) {
        if (isUnchanged(shown[row], old[row]))
            continue;
        const qsizetype first = row;
        while (row + 1 < old.size() && !isUnchanged(shown[row + 1], old[row + 1]))
            ++row;
        Q_EMIT dataChanged(index(int(first)), index(int(row)));
    }
}

} // namespace ludarium
