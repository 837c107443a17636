#include "Services/Library/LibraryIndex.h"

#include "Services/Library/GameGroup.h"
#include "Services/Library/SmartCollection.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace ludarium {

namespace {

using Position = LibraryIndex::Position;
using Kind = SmartCollection::Kind;

bool isStatic(Kind kind) {
    switch (kind) {
    case Kind::byGenre:
    case Kind::byDecade:
    case Kind::byDeveloper:
    case Kind::byPublisher:
    case Kind::mt32Games:
    case Kind::scummvmGames:
        return true;
    default:
        return false;
    }
}

/// The rows of the sidebar that only depend on the collection's data, in their order; a row's place is its bit.
const QList<SmartCollection> &staticRows() {
    static const QList<SmartCollection> rows = [] {
        QList<SmartCollection> result;
        for (const SmartCollectionSection &section : smartCollectionSections())
            for (const SmartCollection &collection : section.collections)
                if (isStatic(collection.filter.kind))
                    result.append(collection);
        return result;
    }();
    return rows;
}

/// Works a text out once for each shared instance of it: texts that repeat in a library share their memory.
template<typename Value>
class ByAddress {
  public:
    template<typename Compute>
    const Value &get(const void *address, const Compute &compute) {
        auto it = m_values.find(address);
        if (it == m_values.end())
            it = m_values.emplace(address, compute()).first;
        return it->second;
    }

  private:
    std::unordered_map<const void *, Value> m_values;
};

/// Bits of the rows of one kind whose value the text contains.
template<typename Text, typename Wanted>
std::uint32_t containedBits(Kind kind, const Text &text, const Wanted &wanted) {
    std::uint32_t bits = 0;
    for (qsizetype i = 0; i < staticRows().size(); ++i)
        if (staticRows()[i].filter.kind == kind && text.contains(wanted(staticRows()[i].filter.text)))
            bits |= 1u << i;
    return bits;
}

class StaticClassifier {
  public:
    explicit StaticClassifier(const QSet<QString> &mt32Titles) : m_mt32Titles(mt32Titles) {
        for (qsizetype i = 0; i < staticRows().size(); ++i) {
            if (staticRows()[i].filter.kind == Kind::mt32Games)
                m_mt32Bit = 1u << i;
            if (staticRows()[i].filter.kind == Kind::scummvmGames)
                m_scummvmBit = 1u << i;
        }
    }

    std::uint32_t bits(const Game &game) {
        std::uint32_t bits = 0;
        if (!game.genre.isEmpty())
            bits |= m_genre.get(game.genre.constData(), [&] {
                return containedBits(Kind::byGenre, game.genre, [](const QString &text) { return text; });
            });
        for (const QByteArray &studio : {game.searchDeveloper, game.searchPublisher})
            if (!studio.isEmpty())
                bits |= m_studio.get(studio.constData(), [&] {
                    return containedBits(Kind::byDeveloper, studio,
                                         [](const QString &text) { return text.toLower().toUtf8(); });
                });
        if (game.releaseYear)
            for (qsizetype i = 0; i < staticRows().size(); ++i) {
                const SmartCollection::SmartFilter &filter = staticRows()[i].filter;
                if (filter.kind == Kind::byDecade && *game.releaseYear >= filter.decade &&
                    *game.releaseYear <= filter.decade + 9)
                    bits |= 1u << i;
            }
        if (game.platform == QLatin1StringView("ScummVM") || game.platform == QLatin1StringView("ScummVM SVN"))
            bits |= m_scummvmBit;
        if (!m_mt32Titles.isEmpty() && m_mt32Titles.contains(normalizeForMT32(game.title)))
            bits |= m_mt32Bit;
        return bits;
    }

  private:
    const QSet<QString> &m_mt32Titles;
    ByAddress<std::uint32_t> m_genre;
    ByAddress<std::uint32_t> m_studio;
    std::uint32_t m_mt32Bit = 0;
    std::uint32_t m_scummvmBit = 0;
};

template<typename Less>
std::vector<Position> sortedPositions(size_t count, const Less &less) {
    std::vector<Position> positions(count);
    std::iota(positions.begin(), positions.end(), Position(0));
    std::stable_sort(positions.begin(), positions.end(), less);
    return positions;
}

const QByteArray &titleKey(const Game &game) {
    return game.searchSortTitle.isEmpty() ? game.searchTitle : game.searchSortTitle;
}

} // namespace

QString normalizeForMT32(const QString &title) {
    QString text = title.toLower();
    text.replace(u'`', u'\'');
    text.replace(QLatin1StringView(": "), QLatin1StringView(" - "));
    // A year in parentheses at the end, with the white space before it.
    if (text.size() >= 6 && text.endsWith(u')') && text[text.size() - 6] == u'(' &&
        std::all_of(text.cend() - 5, text.cend() - 1, [](QChar c) { return c.isDigit(); })) {
        text.chop(6);
        while (!text.isEmpty() && text.back().isSpace())
            text.chop(1);
    }
    qsizetype begin = 0;
    while (begin < text.size() && text[begin] == u' ')
        ++begin;
    while (text.size() > begin && text.back() == u' ')
        text.chop(1);
    return text.sliced(begin);
}

int LibraryIndex::staticBit(const QString &smartCollectionId) {
    for (qsizetype i = 0; i < staticRows().size(); ++i)
        if (staticRows()[i].id == smartCollectionId)
            return static_cast<int>(i);
    return -1;
}

std::shared_ptr<const LibraryIndex> LibraryIndex::build(const GameList &games, const QSet<QString> &mt32Titles) {
    auto index = std::make_shared<LibraryIndex>();
    const size_t count = static_cast<size_t>(games.size());

    qsizetype bytes = 0;
    for (const GamePtr &game : games)
        bytes += game->searchTitle.size() + game->searchSortTitle.size() + game->searchDeveloper.size() +
                 game->searchPublisher.size() + game->searchGenre.size() + game->searchSeries.size() + 6;
    index->m_searchText.reserve(bytes);
    index->m_ends.reserve(count);
    index->m_platform.reserve(count);
    index->m_static.reserve(count);
    StaticClassifier classifier(mt32Titles);
    for (const GamePtr &game : games) {
        for (const QByteArray *text : {&game->searchTitle, &game->searchSortTitle, &game->searchDeveloper,
                                       &game->searchPublisher, &game->searchGenre, &game->searchSeries})
            if (!text->isEmpty())
                index->m_searchText.append(*text).append('\0');
        index->m_ends.push_back(static_cast<std::uint32_t>(index->m_searchText.size()));

        auto platform = index->m_platformNumbers.constFind(game->platform);
        if (platform == index->m_platformNumbers.cend()) {
            platform =
                index->m_platformNumbers.insert(game->platform, static_cast<int>(index->m_platformCounts.size()));
            index->m_platformCounts.push_back(0);
        }
        index->m_platform.push_back(*platform);
        ++index->m_platformCounts[static_cast<size_t>(*platform)];

        const std::uint32_t bits = classifier.bits(*game);
        index->m_static.push_back(bits);
        for (std::uint32_t rest = bits; rest != 0; rest &= rest - 1)
            ++index->m_staticCounts[static_cast<size_t>(std::countr_zero(rest))];
    }

    // Sorting keys side by side in memory: comparing records would miss the cache at every step.
    std::vector<QByteArrayView> titles;
    std::vector<QStringView> developers;
    std::vector<int> years;
    std::vector<double> ratings;
    for (const GamePtr &game : games) {
        titles.emplace_back(titleKey(*game));
        developers.emplace_back(game->developer);
        years.push_back(game->releaseYear.value_or(0));
        ratings.push_back(game->communityRating.value_or(0.0));
    }
    auto &orders = index->m_orders;
    orders[0] = sortedPositions(count, [&](Position a, Position b) { return titles[a] < titles[b]; });
    orders[1] = sortedPositions(count, [&](Position a, Position b) { return years[a] < years[b]; });
    orders[2] = sortedPositions(count, [&](Position a, Position b) { return developers[a] < developers[b]; });
    orders[3] = sortedPositions(count, [&](Position a, Position b) { return ratings[a] > ratings[b]; });

    index->m_developerRank.resize(count);
    Position rank = 0;
    for (size_t i = 1; i < count; ++i) {
        rank += developers[orders[2][i]] != developers[orders[2][i - 1]];
        index->m_developerRank[orders[2][i]] = rank;
    }

    std::vector<QString> normalized;
    normalized.reserve(count);
    for (const GamePtr &game : games)
        normalized.push_back(GameGroup::normalize(game->title));
    const std::vector<Position> byTitle =
        sortedPositions(count, [&](Position a, Position b) { return normalized[a] < normalized[b]; });
    index->m_group.resize(count);
    for (const Position position : byTitle) {
        if (index->m_groupTitles.empty() || index->m_groupTitles.back() != normalized[position])
            index->m_groupTitles.push_back(normalized[position]);
        index->m_group[position] = static_cast<Position>(index->m_groupTitles.size() - 1);
    }
    return index;
}

const std::vector<Position> &LibraryIndex::order(SortOrder order) const {
    return m_orders.at(static_cast<size_t>(order));
}

std::vector<bool> LibraryIndex::search(const QByteArray &lowerCasedQuery) const {
    std::vector<bool> found(size(), false);
    const char *const text = m_searchText.constData();
    const size_t length = static_cast<size_t>(m_searchText.size());
    size_t from = 0;
    size_t game = 0;
    while (const void *hit = ::memmem(text + from, length - from, lowerCasedQuery.constData(),
                                      static_cast<size_t>(lowerCasedQuery.size()))) {
        const auto at = static_cast<std::uint32_t>(static_cast<const char *>(hit) - text);
        // Hits come in order, so the game of this one is not far behind the last.
        while (m_ends[game] <= at)
            ++game;
        found[game] = true;
        from = m_ends[game];
        if (from >= length)
            break;
    }
    return found;
}

} // namespace ludarium
