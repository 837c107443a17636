#include "App/AppState.h"

#include "App/LaunchDatabases.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Emulators/PrerequisitesManager.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/BatchOperationsManager.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryBrowser.h"
#include "Services/Library/PlatformGroupManager.h"
#include "Services/Library/PlaySessionTracker.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <chrono>
#include <utility>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::milliseconds searchDelay{150};
/// After a load, so that the first pictures on screen come before those that nobody looks at.
constexpr std::chrono::seconds preCacheDelay{15};

} // namespace

AppState::AppState(Host &host, EmulatorManager &emulators, const LaunchDatabases &databases, LibraryServices services,
                   QObject *parent)
    : QObject(parent), m_host(host), m_emulators(emulators),
      m_library(std::make_unique<GameLibrary>(host, std::move(services))),
      m_images(std::make_unique<ImageLoader>(host)), m_browser(std::make_unique<LibraryBrowser>(*m_library)),
      m_platformGroups(std::make_unique<PlatformGroupManager>(host.settings)),
      m_launcher(std::make_unique<GameLauncher>(host, emulators, databases.dosCollaborators())),
      m_versionCheck(std::make_unique<VersionCheck>(databases.versionCheckCollaborators(*m_library))),
      m_exceptions(databases.exceptions), m_tracker(std::make_unique<PlaySessionTracker>(host)),
      m_batchOperations(std::make_unique<BatchOperationsManager>(host)),
      m_prerequisites(std::make_unique<PrerequisitesManager>(host)) {
    m_batchOperations->setGameLibrary(m_library.get());
    m_launcher->setDosRouteCollaborators(databases.dosRouteCollaborators(host, emulators));
    connect(m_browser.get(), &LibraryBrowser::changed, this, &AppState::filteredGamesChanged);
    m_tracker->onSessionEnded = [this](const QString &id, double seconds) {
        return m_library->addPlayTime(id, seconds);
    };
    m_launcher->runningTest = [this](const QString &id) { return m_tracker->isRunningNow(id); };
    m_launcher->onStarted = [this](GamePtr game, std::optional<ProcessId> process) {
        m_library->recordPlay(game->id, 0);
        m_tracker->startSession(std::move(game), process);
    };
    connect(m_library.get(), &GameLibrary::isLoadingChanged, this, [this] {
        if (!m_library->isLoading())
            m_tracker->recover([this](const QString &id) { return m_library->game(id); });
    });
    m_viewMode = viewModeFromText(host.settings.value(Settings::viewMode)).value_or(m_viewMode);
    m_gridSize = gridSizeFromText(host.settings.value(Settings::gridSize)).value_or(m_gridSize);
    m_query.sortOrder = sortOrderFromText(host.settings.value(Settings::sortOrder)).value_or(m_query.sortOrder);
    m_groupDuplicateGames = host.settings.value(Settings::groupDuplicateGames);
    m_searchDebounce.setSingleShot(true);
    m_searchDebounce.setInterval(searchDelay);
    connect(&m_searchDebounce, &QTimer::timeout, this, [this] { narrow(&BrowseQuery::search, m_searchText); });
}

AppState::~AppState() {
    m_tracker->suspend();
}

bool AppState::restoreCollection() {
    const QString path = m_host.settings.value(Settings::collectionPath);
    if (path.isEmpty())
        return false;
    setCollectionPath(path);
    m_isRestored = true;
    return true;
}

void AppState::setCollectionPath(const QString &path) {
    if (path.isEmpty())
        return;
    m_isRestored = false;
    const QString old = std::exchange(m_collectionPath, QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    collectionChanged(old);
}

void AppState::collectionChanged(const QString &oldPath) {
    // The folder is used even when the settings cannot keep it; the next start then asks again.
    try {
        if (m_host.settings.value(Settings::collectionPath) != m_collectionPath)
            m_host.settings.setValue(Settings::collectionPath, m_collectionPath);
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(u"Failed to remember the collection folder: %1"_s.arg(reason));
        Q_EMIT collectionPathRefused(reason);
    }
    m_images->clearCache();
    if (!oldPath.isEmpty() && oldPath != m_collectionPath)
        m_library->clearCollectionData();
    m_launcher->setCollectionURL(m_collectionPath);
    Q_EMIT collectionPathChanged();
    spawn(loadThenCopyPictures(m_collectionPath), "loading the collection");
}

QCoro::Task<> AppState::loadThenCopyPictures(QString path) {
    const QPointer<AppState> self(this);
    co_await m_library->loadCollection(path);
    if (!self)
        co_return;
    const GameList games = m_library->games();
    co_await m_host.clock.sleep(preCacheDelay);
    if (self && path == m_collectionPath)
        co_await m_images->backgroundPreCacheThumbnails(games, path);
}

void AppState::setViewMode(ViewMode mode) {
    m_viewMode = mode;
    Q_EMIT viewSettingsChanged();
}

void AppState::setGridSize(GridSize size) {
    m_gridSize = size;
    Q_EMIT viewSettingsChanged();
}

void AppState::setSortOrder(SortOrder order) {
    narrow(&BrowseQuery::sortOrder, order);
    Q_EMIT viewSettingsChanged();
}

void AppState::setGroupDuplicateGames(bool group) {
    m_groupDuplicateGames = group;
    Q_EMIT viewSettingsChanged();
    Q_EMIT filteredGamesChanged();
}

void AppState::saveViewSettings() {
    m_host.settings.transaction([this] {
        m_host.settings.setValue(Settings::viewMode, viewModeText(m_viewMode));
        m_host.settings.setValue(Settings::gridSize, gridSizeText(m_gridSize));
        m_host.settings.setValue(Settings::sortOrder, sortOrderText(m_query.sortOrder));
        m_host.settings.setValue(Settings::groupDuplicateGames, m_groupDuplicateGames);
    });
}

void AppState::setSelectedGameId(const QString &id) {
    if (m_selectedGameId == id)
        return;
    m_selectedGameId = id;
    const GamePtr game = m_library->game(id);
    m_selectedGroupTitle = game ? GameGroup::normalize(game->title) : QString();
    Q_EMIT selectionChanged();
}

std::optional<GameGroup> AppState::selectedGameGroup() const {
    if (m_selectedGameId.isEmpty())
        return {};
    const QList<GameGroup> groups = filteredGameGroups();
    const auto found = std::find_if(groups.begin(), groups.end(), [this](const GameGroup &group) {
        return group.normalizedTitle == m_selectedGroupTitle;
    });
    return found == groups.end() ? std::nullopt : std::optional(*found);
}

void AppState::setQuery(const BrowseQuery &query) {
    const BrowseQuery before = std::exchange(m_query, query);
    if (before == query)
        return;
    if (before.platform != query.platform)
        Q_EMIT selectionChanged();
    Q_EMIT filteredGamesChanged();
}

void AppState::setSearchText(const QString &text) {
    m_searchDebounce.stop();
    if (std::exchange(m_searchText, text) != text)
        Q_EMIT searchTextChanged();
    if (text.isEmpty())
        narrow(&BrowseQuery::search, QString());
    else
        m_searchDebounce.start();
}

void AppState::goTo(BrowseQuery place) {
    place.search = m_query.search;
    place.sortOrder = m_query.sortOrder;
    setQuery(place);
}

void AppState::clearFilters() {
    goTo({});
}

GameList AppState::filteredGames() const {
    return m_browser->filteredGames(m_query);
}

QList<GameGroup> AppState::filteredGameGroups() const {
    return m_browser->filteredGameGroups(m_query);
}

} // namespace ludarium
