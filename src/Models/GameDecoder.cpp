#include "Models/GameDecoder.h"

#include "Models/CollectionDate.h"
#include "Models/FieldTable.h"
#include "Models/FieldText.h"
#include "Models/TextPool.h"

#include <QUuid>
#include <cstdlib>

namespace ludarium {

namespace {

enum Field : int {
    fieldID,
    fieldTitle,
    fieldSortTitle,
    fieldPlatform,
    fieldReleaseDate,
    fieldReleaseYear,
    fieldDeveloper,
    fieldPublisher,
    fieldGenre,
    fieldSeries,
    fieldPlayMode,
    fieldMaxPlayers,
    fieldCooperative,
    fieldNotes,
    fieldOverview,
    fieldRating,
    fieldCommunityStarRating,
    fieldCommunityStarRatingTotalVotes,
    fieldApplicationPath,
    fieldConfigurationPath,
    fieldCommandLine,
    fieldRootFolder,
    fieldManualPath,
    fieldMusicPath,
    fieldVideoPath,
    fieldCompleted,
    fieldHide,
    fieldBroken,
    fieldPortable,
    fieldSource,
    fieldDatabaseID,
    fieldWikipediaURL,
    fieldVideoURL,
    fieldDateAdded,
};

constexpr FieldTable fields({
    {"ID", fieldID},
    {"Title", fieldTitle},
    {"SortTitle", fieldSortTitle},
    {"Platform", fieldPlatform},
    {"ReleaseDate", fieldReleaseDate},
    {"releaseYear", fieldReleaseYear},
    {"Developer", fieldDeveloper},
    {"Publisher", fieldPublisher},
    {"Genre", fieldGenre},
    {"Series", fieldSeries},
    {"PlayMode", fieldPlayMode},
    {"MaxPlayers", fieldMaxPlayers},
    {"Cooperative", fieldCooperative},
    {"Notes", fieldNotes},
    {"Overview", fieldOverview},
    {"Rating", fieldRating},
    {"CommunityStarRating", fieldCommunityStarRating},
    {"CommunityStarRatingTotalVotes", fieldCommunityStarRatingTotalVotes},
    {"ApplicationPath", fieldApplicationPath},
    {"ConfigurationPath", fieldConfigurationPath},
    {"CommandLine", fieldCommandLine},
    {"RootFolder", fieldRootFolder},
    {"ManualPath", fieldManualPath},
    {"MusicPath", fieldMusicPath},
    {"VideoPath", fieldVideoPath},
    {"Completed", fieldCompleted},
    {"Hide", fieldHide},
    {"Broken", fieldBroken},
    {"Portable", fieldPortable},
    {"Source", fieldSource},
    {"DatabaseID", fieldDatabaseID},
    {"WikipediaURL", fieldWikipediaURL},
    {"VideoURL", fieldVideoURL},
    {"VideoUrl", fieldVideoURL}, // as LaunchBox writes it
    {"DateAdded", fieldDateAdded},
});

LongText longText(std::string_view utf8) {
    return utf8.empty() ? LongText("", 0) : LongText(utf8.data(), qsizetype(utf8.size()));
}

/// The heap of a thread other than the first grows in glibc by the page, with one system call under the lock of the
/// address space for each. Asking for a block, less than what gets a mapping of its own, and giving it back makes room
/// for the next games in one call: a tenth of the time of a load.
void growHeap() {
    void *volatile block = std::malloc(100'000);
    std::free(block);
}

/// The same game gets the same id on every load and on every machine.
QString madeId(const Game &game) {
    static constexpr QUuid space(0x6d1c3b52, 0x0f7e, 0x4f0a, 0x9c, 0x55, 0x2e, 0x8a, 0x41, 0x7b, 0xd3, 0x90);
    const QChar separator(0);
    return QUuid::createUuidV5(space, game.platform + separator + game.title + separator + game.applicationPath)
        .toString(QUuid::WithoutBraces);
}

} // namespace

GameDecoder::GameDecoder(TextPool &pool) : m_pool(pool), m_game(std::make_shared<Game>()) {}

int GameDecoder::field(std::string_view key) {
    return fields.find(key);
}

void GameDecoder::set(int field, std::string_view text) {
    if (field < 0 || m_seen.test(size_t(field)))
        return;
    m_seen.set(size_t(field));

    Game &game = *m_game;
    const auto takePooled = [&](QString &value) { value = m_pool.shared(text).text; };
    const auto takeSearched = [&](QString &value, QByteArray &search) {
        auto [pooled, lower] = m_pool.shared(text);
        value = std::move(pooled);
        search = std::move(lower);
    };
    const auto takeUnique = [&](QString &value, QByteArray &search) {
        value = fieldText(text);
        search = searchForm(text);
    };

    switch (Field(field)) {
    case fieldID:
        game.id = fieldText(text);
        break;
    case fieldTitle:
        takeUnique(game.title, game.searchTitle);
        break;
    case fieldSortTitle:
        takeUnique(game.sortTitle, game.searchSortTitle);
        break;
    case fieldPlatform:
        takePooled(game.platform);
        break;
    case fieldReleaseDate:
        game.releaseDate = parseCollectionDate(text);
        break;
    case fieldReleaseYear:
        game.releaseYear = fieldInteger(text);
        break;
    case fieldDeveloper:
        takeSearched(game.developer, game.searchDeveloper);
        break;
    case fieldPublisher:
        takeSearched(game.publisher, game.searchPublisher);
        break;
    case fieldGenre:
        takeSearched(game.genre, game.searchGenre);
        break;
    case fieldSeries:
        takeSearched(game.series, game.searchSeries);
        break;
    case fieldPlayMode:
        takePooled(game.playMode);
        break;
    case fieldMaxPlayers:
        game.maxPlayers = fieldInteger(text);
        break;
    case fieldCooperative:
        game.cooperative = fieldFlag(text);
        break;
    case fieldNotes:
        game.notes = longText(text);
        break;
    case fieldOverview:
        game.overview = longText(text);
        break;
    case fieldRating:
        takePooled(game.rating);
        break;
    case fieldCommunityStarRating:
        game.communityRating = fieldReal(text);
        break;
    case fieldCommunityStarRatingTotalVotes:
        game.communityRatingCount = fieldInteger(text);
        break;
    case fieldApplicationPath:
        game.applicationPath = fieldText(text);
        break;
    case fieldConfigurationPath:
        game.configurationPath = fieldText(text);
        break;
    case fieldCommandLine:
        game.commandLine = fieldText(text);
        break;
    case fieldRootFolder:
        game.rootFolder = fieldText(text);
        break;
    case fieldManualPath:
        game.manualPath = fieldText(text);
        break;
    case fieldMusicPath:
        game.musicPath = fieldText(text);
        break;
    case fieldVideoPath:
        game.videoPath = fieldText(text);
        break;
    case fieldCompleted:
        game.completed = fieldFlag(text);
        break;
    case fieldHide:
        game.hide = fieldFlag(text);
        break;
    case fieldBroken:
        game.broken = fieldFlag(text);
        break;
    case fieldPortable:
        game.portable = fieldFlag(text);
        break;
    case fieldSource:
        takePooled(game.source);
        break;
    case fieldDatabaseID:
        game.databaseID = fieldText(text);
        break;
    case fieldWikipediaURL:
        game.wikipediaURL = fieldText(text);
        break;
    case fieldVideoURL:
        game.videoURL = fieldText(text);
        break;
    case fieldDateAdded:
        game.dateAdded = parseCollectionDate(text);
        break;
    }
}

void GameDecoder::setReleaseYear(int year) {
    m_seen.set(fieldReleaseYear);
    m_game->releaseYear = year;
}

GamePtr GameDecoder::finish() {
    if (!m_seen.test(fieldTitle))
        set(fieldTitle, "Unknown");
    if (!m_seen.test(fieldPlatform))
        set(fieldPlatform, "MS-DOS");
    if (!m_game->releaseYear && m_game->releaseDate)
        m_game->releaseYear = m_game->releaseDate->date().year();
    if (!m_seen.test(fieldID))
        m_game->id = madeId(*m_game);

    if (++m_finished % 32 == 0)
        growHeap();
    m_seen.reset();
    return std::exchange(m_game, std::make_shared<Game>());
}

void GameDecoder::reset() {
    if (m_seen.any())
        m_game = std::make_shared<Game>();
    m_seen.reset();
}

} // namespace ludarium
