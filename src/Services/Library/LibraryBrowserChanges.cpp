// What a change of the library leaves of the lists that were worked out.

#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryBrowser.h"

#include <algorithm>
#include <utility>

namespace ludarium {

namespace {

using Kind = SmartCollection::Kind;

/// Whether the change may take the game into the collection or out of it.
bool mayConcern(Kind kind, const Game &old, const Game &changed) {
    switch (kind) {
    case Kind::unplayed:
    case Kind::mostPlayed:
        return old.playCount != changed.playCount;
    case Kind::recentlyPlayed:
        return old.lastPlayed != changed.lastPlayed;
    case Kind::installed:
        return old.isInstalled != changed.isInstalled;
    case Kind::progressPlaying:
    case Kind::progressBeaten:
    case Kind::progressCompleted:
        return old.gameProgress != changed.gameProgress;
    default:
        return false; // in no record, or in none of its fields that change
    }
}

/// Whether the change may put the game in or out of the query's list, or at another place of it.
bool mayConcern(const BrowseQuery &query, const Game &old, const Game &changed) {
    const SmartCollection *collection = smartCollection(query.smartCollectionId);
    return query.recentlyPlayed || (query.favoritesOnly && old.isFavorite != changed.isFavorite) ||
           (query.installedOnly && old.isInstalled != changed.isInstalled) ||
           (query.sortOrder == SortOrder::recentlyPlayed && old.lastPlayed != changed.lastPlayed) ||
           (query.sortOrder == SortOrder::playCount && old.playCount != changed.playCount) ||
           (collection && mayConcern(collection->filter.kind, old, changed));
}

} // namespace

void LibraryBrowser::invalidate() {
    m_positionsKey.reset();
    m_gamesKey.reset();
    m_groupsKey.reset();
    m_counts.forget();
    Q_EMIT changed();
}

void LibraryBrowser::gamesChanged() {
    if (std::exchange(m_followed, false))
        Q_EMIT changed();
    else
        invalidate();
}

/// Notes and ratings are in no record; only their two collections are made from them.
void LibraryBrowser::userDataChanged() {
    m_counts.forgetDetails();
    for (auto *key : {&m_positionsKey, &m_gamesKey, &m_groupsKey})
        if (*key && LibraryIndex::staticBit((*key)->smartCollectionId) < 0 && !(*key)->smartCollectionId.isEmpty())
            key->reset();
    Q_EMIT changed();
}

void LibraryBrowser::recentlyPlayedChanged() {
    if (m_groupsKey && m_groupsKey->recentlyPlayed)
        m_groupsKey.reset();
    Q_EMIT changed();
}

void LibraryBrowser::replaceGame(qsizetype position, const GamePtr &old) {
    m_followed = true;
    const GamePtr &changed = m_library.games()[position];
    m_counts.replace(*old, *changed);
    for (auto *key : {&m_positionsKey, &m_gamesKey, &m_groupsKey})
        if (*key && mayConcern(**key, *old, *changed))
            key->reset();
    if (m_gamesKey)
        if (const qsizetype row = m_games.indexOf(old); row >= 0)
            m_games[row] = changed;
    if (m_groupsKey)
        replaceInGroup(static_cast<Position>(position), old, changed);
}

/// The order by title is that of the groups' numbers. In another one the group keeps its place if its key is the same.
void LibraryBrowser::replaceInGroup(Position position, const GamePtr &old, const GamePtr &changed) {
    const SortOrder order = m_groupsKey->sortOrder;
    const QString &title = m_library.index().groupTitle(m_library.index().group(position));
    const auto isIt = [&](const GameGroup &group) { return group.normalizedTitle == title; };
    const auto found = std::find_if(m_groups.cbegin(), m_groups.cend(), isIt);
    const qsizetype at = found == m_groups.cend() ? -1 : found->variants.indexOf(old);
    if (at < 0)
        return;
    QList<GamePtr> variants = found->variants;
    variants[at] = changed;
    GameGroup group(title, std::move(variants));
    const auto key = [&](const GameGroup &of, const GamePtr &primary) {
        return order == SortOrder::title ? 0
                                         : sortKey(of, static_cast<Position>(*m_library.position(primary->id)), order);
    };
    if (key(*found, found->primaryVariant) != key(group, group.primaryVariant))
        m_groupsKey.reset();
    else
        m_groups[found - m_groups.cbegin()] = std::move(group);
}

} // namespace ludarium
