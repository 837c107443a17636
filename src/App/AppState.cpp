#include "App/AppState.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Library/GameLibrary.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

/// Sorting key of a title: the sort title where there is one.
const QByteArray &sortKey(const Game &game) {
    return game.searchSortTitle.isEmpty() ? game.searchTitle : game.searchSortTitle;
}

} // namespace

AppState::AppState(Host &host, EmulatorManager &emulators, QObject *parent)
    : QObject(parent), m_host(host), m_library(std::make_unique<GameLibrary>(host)),
      m_launcher(std::make_unique<GameLauncher>(host, emulators)) {
    connect(m_library.get(), &GameLibrary::gamesChanged, this, &AppState::filteredGamesChanged);
    m_viewMode = viewModeFromText(host.settings.value(Settings::viewMode)).value_or(m_viewMode);
    m_gridSize = gridSizeFromText(host.settings.value(Settings::gridSize)).value_or(m_gridSize);
    m_sortOrder = sortOrderFromText(host.settings.value(Settings::sortOrder)).value_or(m_sortOrder);
    m_groupDuplicateGames = host.settings.value(Settings::groupDuplicateGames);
}

AppState::~AppState() = default;

void AppState::restoreCollection() {
    const QString path = m_host.settings.value(Settings::collectionPath);
    if (!path.isEmpty() && QFileInfo::exists(path))
        setCollectionPath(path);
}

void AppState::setCollectionPath(const QString &path) {
    if (path.isEmpty())
        return;
    const QString old = std::exchange(m_collectionPath, QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    collectionChanged(old);
}

void AppState::collectionChanged(const QString &oldPath) {
    // The folder is used even when the settings cannot keep it; the next start then asks again.
    try {
        m_host.settings.setValue(Settings::collectionPath, m_collectionPath);
    } catch (const std::exception &error) {
        Log::error(QStringLiteral("Failed to remember the collection folder: %1").arg(QString::fromUtf8(error.what())));
    }
    if (!oldPath.isEmpty() && oldPath != m_collectionPath)
        m_library->clearCollectionData();
    m_launcher->setCollectionURL(m_collectionPath);
    Q_EMIT collectionPathChanged();
    spawn(m_library->loadCollection(m_collectionPath), "loading the collection");
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
    m_sortOrder = order;
    Q_EMIT viewSettingsChanged();
    Q_EMIT filteredGamesChanged();
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
        m_host.settings.setValue(Settings::sortOrder, sortOrderText(m_sortOrder));
        m_host.settings.setValue(Settings::groupDuplicateGames, m_groupDuplicateGames);
    });
}

void AppState::setSelectedGameId(const QString &id) {
    if (m_selectedGameId == id)
        return;
    m_selectedGameId = id;
    Q_EMIT selectionChanged();
}

void AppState::setSelectedPlatform(const QString &name) {
    if (m_selectedPlatform == name)
        return;
    m_selectedPlatform = name;
    Q_EMIT selectionChanged();
    Q_EMIT filteredGamesChanged();
}

void AppState::setSearchText(const QString &text) {
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT filteredGamesChanged();
}

GameList AppState::filteredGames() const {
    const QByteArray wanted = m_searchText.trimmed().toLower().toUtf8();
    GameList result;
    for (const GamePtr &game : m_library->games()) {
        if (!m_selectedPlatform.isEmpty() && game->platform != m_selectedPlatform)
            continue;
        if (!wanted.isEmpty() && !game->searchTitle.contains(wanted) && !game->searchSortTitle.contains(wanted) &&
            !game->searchDeveloper.contains(wanted) && !game->searchPublisher.contains(wanted) &&
            !game->searchGenre.contains(wanted) && !game->searchSeries.contains(wanted))
            continue;
        result.append(game);
    }
    std::stable_sort(result.begin(), result.end(),
                     [](const GamePtr &a, const GamePtr &b) { return sortKey(*a) < sortKey(*b); });
    return result;
}

} // namespace ludarium
