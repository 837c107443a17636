#include "Services/Library/PlaylistFields.h"

#include "Models/FieldText.h"

#include <QHash>
#include <QLocale>
#include <bit>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

QByteArray lower(const QString &text) {
    return text.toLower().toUtf8();
}

/// Texts of a library that repeat share their memory, so their address tells them apart.
template<typename Text>
std::uint64_t address(const Text &text) {
    return std::bit_cast<std::uintptr_t>(text.constData());
}

template<auto Member>
constexpr PlaylistField shared{[](const Game &g) { return lower(g.*Member); },
                               [](const Game &g) { return address(g.*Member); }};
/// The record holds the lower-cased form already.
template<auto Member>
constexpr PlaylistField sharedSearch{[](const Game &g) { return g.*Member; },
                                     [](const Game &g) { return address(g.*Member); }};
template<auto Member>
constexpr PlaylistField flag{
    [](const Game &g) { return QByteArray(std::optional<bool>(g.*Member).value_or(false) ? "true" : "false"); },
    [](const Game &g) { return std::uint64_t(std::optional<bool>(g.*Member).value_or(false)); }};

constexpr PlaylistField title{[](const Game &g) { return g.searchTitle; }, nullptr};
constexpr PlaylistField notes{[](const Game &g) {
                                  return searchForm({g.notes.constData(), size_t(g.notes.size())});
                              },
                              nullptr};
constexpr PlaylistField overview{[](const Game &g) {
                                     return searchForm({g.overview.constData(), size_t(g.overview.size())});
                                 },
                                 nullptr};
constexpr PlaylistField year{[](const Game &g) {
                                 if (g.releaseYear)
                                     return QByteArray::number(*g.releaseYear);
                                 return g.releaseDate ? lower(g.releaseDate->toString(Qt::ISODate)) : QByteArray();
                             },
                             [](const Game &g) {
                                 if (g.releaseYear)
                                     return std::uint64_t(std::uint32_t(*g.releaseYear));
                                 return g.releaseDate
                                            ? std::uint64_t(1) << 63 | std::uint64_t(g.releaseDate->toMSecsSinceEpoch())
                                            : std::uint64_t(1) << 62;
                             }};
constexpr PlaylistField rating{
    [](const Game &g) {
        return g.communityRating ? lower(QString::number(*g.communityRating, 'g', QLocale::FloatingPointShortest))
                                 : QByteArray();
    },
    // No finite rating has the bits of this one.
    [](const Game &g) {
        return g.communityRating ? std::bit_cast<std::uint64_t>(*g.communityRating) : ~std::uint64_t(0);
    }};
constexpr PlaylistField players{
    [](const Game &g) { return g.maxPlayers ? QByteArray::number(*g.maxPlayers) : QByteArray(); },
    [](const Game &g) { return g.maxPlayers ? std::uint64_t(std::uint32_t(*g.maxPlayers)) : ~std::uint64_t(0); }};
constexpr PlaylistField nothing{[](const Game &) { return QByteArray(); },
                                [](const Game &) { return std::uint64_t(0); }};

} // namespace

const PlaylistField *playlistField(const QString &lowerCasedKey) {
    static const QHash<QString, const PlaylistField *> fields{
        {u"title"_s, &title},
        {u"platform"_s, &shared<&Game::platform>},
        {u"genre"_s, &sharedSearch<&Game::searchGenre>},
        {u"genres"_s, &sharedSearch<&Game::searchGenre>},
        {u"developer"_s, &sharedSearch<&Game::searchDeveloper>},
        {u"publisher"_s, &sharedSearch<&Game::searchPublisher>},
        {u"series"_s, &sharedSearch<&Game::searchSeries>},
        {u"releasedate"_s, &year},
        {u"year"_s, &year},
        {u"releaseyear"_s, &year},
        {u"rating"_s, &rating},
        {u"communityrating"_s, &rating},
        {u"playmode"_s, &shared<&Game::playMode>},
        {u"installed"_s, &flag<&Game::isInstalled>},
        {u"favorite"_s, &flag<&Game::isFavorite>},
        {u"favourite"_s, &flag<&Game::isFavorite>},
        {u"notes"_s, &notes},
        {u"overview"_s, &overview},
        {u"description"_s, &overview},
        {u"source"_s, &shared<&Game::source>},
        {u"completed"_s, &flag<&Game::completed>},
        {u"broken"_s, &flag<&Game::broken>},
        {u"portable"_s, &flag<&Game::portable>},
        {u"cooperative"_s, &flag<&Game::cooperative>},
        {u"coop"_s, &flag<&Game::cooperative>},
        {u"maxplayers"_s, &players},
        {u"videotype"_s, &nothing},
        {u"soundtype"_s, &nothing},
    };
    return fields.value(lowerCasedKey, nullptr);
}

QByteArray lowerDescription(const Game &game) {
    const QByteArray both = game.notes + ' ' + game.overview;
    return searchForm({both.constData(), size_t(both.size())});
}

} // namespace ludarium
