#include "Services/Library/GameLibrary.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Services/Library/LaunchBoxParser.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPointer>

namespace ludarium {

namespace {

/// What a full load reads, made on the pool and published as a whole.
struct ParsedCollection {
    QList<Platform> platforms;
    LaunchBoxParser::Games parsed;
    QList<Playlist> playlists;
};

/// The games that the library shows: Windows 9x is not supported yet.
qsizetype dropUnsupportedGames(GameList &games) {
    return games.removeIf([](const GamePtr &game) {
        return game->platform == QLatin1StringView("Windows 9x") || game->platform == QLatin1StringView("Windows 9.x");
    });
}

/// Gives every game the applications that name its id, in file order.
void associateAdditionalApplications(GameList &games, const QList<AdditionalApplication> &applications) {
    if (applications.isEmpty())
        return;
    QHash<QString, QList<AdditionalApplication>> byGame;
    for (const AdditionalApplication &application : applications)
        byGame[application.gameId].append(application);
    for (GamePtr &game : games) {
        const auto found = byGame.constFind(game->id);
        if (found == byGame.cend())
            continue;
        auto changed = std::make_shared<Game>(*game);
        changed->additionalApplications = *found;
        game = std::move(changed);
    }
}

} // namespace

GameLibrary::GameLibrary(Host &host, QObject *parent) : QObject(parent), m_host(host) {}

bool GameLibrary::validateCollectionStructure(const QString &collection) {
    const QDir folder(collection);
    if (!folder.exists(QStringLiteral("Data")) && !folder.exists(QStringLiteral("xml"))) {
        Log::error(QStringLiteral("❌ Validation failed: No Data or xml folder found"));
        return false;
    }
    if (folder.exists(QStringLiteral("Data/Platforms")))
        return true;
    if (folder.exists(QStringLiteral("xml/all"))) {
        Log::info(QStringLiteral("✅ Lite collection structure detected: xml/all/"));
        return true;
    }
    for (const char *name : {"eXo", "Images", "Videos", "Manuals"})
        if (folder.exists(QLatin1StringView(name)))
            return true;
    return false;
}

QCoro::Task<> GameLibrary::loadCollection(QString collection) {
    const QPointer<GameLibrary> self(this);
    m_collection = collection;
    setLoading(true);
    setErrorMessage({});
    setStatus(QStringLiteral("Checking collection..."), 0);
    const bool valid = co_await runOnPool([collection] { return validateCollectionStructure(collection); });
    if (!self)
        co_return;
    if (!valid) {
        setStatus(QStringLiteral("Validation failed"), m_loadingProgress);
        setErrorMessage(QStringLiteral("Invalid collection. Expected folders: Data/, eXo/, Images/"));
        setLoading(false);
        co_return;
    }
    QString failure;
    try {
        co_await fullLoad(collection);
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self)
        co_return;
    if (!failure.isEmpty()) {
        Log::error(QStringLiteral("❌ Error during load: %1").arg(failure));
        setStatus(QStringLiteral("Error: %1").arg(failure), m_loadingProgress);
        setErrorMessage(QStringLiteral("Failed to load collection: %1").arg(failure));
    }
    setLoading(false);
}

QCoro::Task<> GameLibrary::fullLoad(QString collection) {
    const QPointer<GameLibrary> self(this);
    QElapsedTimer timer;
    timer.start();
    setStatus(QStringLiteral("Loading platforms..."), 0.1);
    // The parser reports from its own thread; the status belongs to the main thread.
    const auto progress = [self](const QString &text) {
        QMetaObject::invokeMethod(
            self.data(),
            [self, text] {
                if (self && self->m_isLoading)
                    self->setStatus(text, 0.25);
            },
            Qt::QueuedConnection);
    };
    ParsedCollection result = co_await runOnPool([collection, progress] {
        const LaunchBoxParser parser;
        ParsedCollection read;
        read.platforms = parser.parsePlatforms(collection);
        read.parsed = parser.parseGamesWithAdditionalApps(collection, progress);
        const qsizetype applications = read.parsed.additionalApplications.size();
        const qsizetype dropped = dropUnsupportedGames(read.parsed.games);
        Log::info(QStringLiteral("✅ Finished parsing: %1 games, %2 additional apps")
                      .arg(read.parsed.games.size())
                      .arg(applications));
        if (dropped > 0)
            Log::info(QStringLiteral("   (Filtered out %1 Win9x games - not yet supported)").arg(dropped));
        associateAdditionalApplications(read.parsed.games, read.parsed.additionalApplications);
        read.playlists = parser.parsePlaylists(collection);
        return read;
    });
    if (!self)
        co_return;
    m_platforms = result.platforms.isEmpty() ? Platform::defaultPlatforms() : std::move(result.platforms);
    setGames(std::move(result.parsed.games));
    m_playlists = std::move(result.playlists);
    Q_EMIT platformsChanged();
    Q_EMIT playlistsChanged();
    Log::info(QStringLiteral("⏱️ ========== TOTAL FULL LOAD TIME: %1ms").arg(timer.elapsed()));
    setStatus(QStringLiteral("Complete! Loaded %1 games. Next launch will be much faster!").arg(m_games.size()), 1);
}

void GameLibrary::clearCollectionData() {
    setGames({});
    m_platforms.clear();
    m_playlists.clear();
    Q_EMIT platformsChanged();
    Q_EMIT playlistsChanged();
    Log::info(QStringLiteral("🧹 Cleared collection-specific data"));
}

void GameLibrary::setLoading(bool loading) {
    if (m_isLoading == loading)
        return;
    m_isLoading = loading;
    Q_EMIT isLoadingChanged();
}

void GameLibrary::setStatus(const QString &status, double progress) {
    m_loadingStatus = status;
    m_loadingProgress = progress;
    Q_EMIT loadingChanged();
}

void GameLibrary::setErrorMessage(const QString &message) {
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void GameLibrary::setGames(GameList games) {
    m_games = std::move(games);
    m_gamesById.clear();
    m_gamesById.reserve(m_games.size());
    for (const GamePtr &game : std::as_const(m_games))
        m_gamesById.insert(game->id, game);
    Q_EMIT gamesChanged();
}

} // namespace ludarium
