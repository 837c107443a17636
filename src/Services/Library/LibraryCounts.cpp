#include "Services/Library/LibraryCounts.h"

#include "Services/Library/GameLibrary.h"
#include "Services/Library/SmartCollection.h"

#include <algorithm>

namespace ludarium {

void LibraryCounts::Sums::add(const Game &game, int by) {
    favorites += game.isFavorite ? by : 0;
    (game.playCount == 0 ? unplayed : played) += by;
    installed += game.isInstalled ? by : 0;
    playing += game.gameProgress == GameProgress::playing ? by : 0;
    beaten += game.gameProgress == GameProgress::beaten ? by : 0;
    completed += game.gameProgress == GameProgress::completed || game.gameProgress == GameProgress::mastered ? by : 0;
}

void LibraryCounts::forget() {
    m_sums.reset();
    m_counts.reset();
}

void LibraryCounts::replace(const Game &old, const Game &changed) {
    m_counts.reset();
    if (m_sums) {
        m_sums->add(old, -1);
        m_sums->add(changed);
    }
}

void LibraryCounts::sumUp() {
    Sums sums;
    for (const GamePtr &game : m_library.games())
        sums.add(*game);
    m_sums = sums;
}

const LibraryCounts::Counts &LibraryCounts::counts() {
    using Kind = SmartCollection::Kind;
    if (m_counts)
        return *m_counts;
    if (!m_sums)
        sumUp();
    // Few games have a note or a rating: those are looked up, not all games.
    int noted = 0;
    int rated = 0;
    const UserData &user = m_library.userData();
    for (auto it = user.allNotes().cbegin(); it != user.allNotes().cend(); ++it)
        noted += !it->isEmpty() && m_library.position(it.key());
    for (auto it = user.allRatings().cbegin(); it != user.allRatings().cend(); ++it)
        rated += *it >= SmartCollection::highRating && m_library.position(it.key());

    const LibraryIndex &index = m_library.index();
    const auto countOf = [&](const SmartCollection &collection) {
        switch (collection.filter.kind) {
        case Kind::unplayed:
            return m_sums->unplayed;
        case Kind::mostPlayed:
            return std::min<int>(m_sums->played, SmartCollection::mostPlayedLimit);
        case Kind::highlyRated:
            return rated;
        case Kind::hasNotes:
            return noted;
        case Kind::installed:
            return m_sums->installed;
        case Kind::progressPlaying:
            return m_sums->playing;
        case Kind::progressBeaten:
            return m_sums->beaten;
        case Kind::progressCompleted:
            return m_sums->completed;
        default:
            return index.staticCollectionCount(LibraryIndex::staticBit(collection.id));
        }
    };
    Counts counts;
    counts.favorites = m_sums->favorites;
    for (const SmartCollectionSection &section : smartCollectionSections())
        for (const SmartCollection &collection : section.collections)
            counts.collections.insert(collection.id, countOf(collection));
    for (const Platform &platform : m_library.platforms()) {
        const int number = index.platformNumber(platform.name);
        counts.platforms.insert(platform.name, number < 0 ? 0 : index.platformCount(number));
    }
    m_counts = std::move(counts);
    return *m_counts;
}

} // namespace ludarium
