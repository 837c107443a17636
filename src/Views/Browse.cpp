#include "Views/Browse.h"

#include "Host/AppLogger.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/PlaySessionTracker.h"
#include "Services/Library/SmartCollection.h"
#include "Views/GameActions.h"
#include "Views/GridGeometry.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <algorithm>

namespace ludarium {

Browse::Browse(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent)
    : QObject(parent), m_state(state), m_games(std::move(covers)), m_facets(state), m_table(state.host()) {
    state.gameLibrary().setIndexedAtLoad(true);
    connect(&state, &AppState::filteredGamesChanged, this, &Browse::refresh);
    connect(&state, &AppState::searchTextChanged, this, &Browse::searchTextChanged);
    connect(&state, &AppState::viewSettingsChanged, this, &Browse::viewSettingsChanged);
    connect(&state, &AppState::selectionChanged, this, &Browse::followSelection);
    connect(&m_games, &GameListModel::modelAboutToBeReset, this, &Browse::listAboutToBeReplaced);
    connect(&m_games, &GameListModel::modelReset, this, &Browse::listReplaced);
    PlaySessionTracker &tracker = state.sessionTracker();
    m_games.setRunningTest([&tracker](const QString &id) { return tracker.isRunning(id); });
    connect(&tracker, &PlaySessionTracker::runningChanged, &m_games, &GameListModel::renewRunning);
    connect(&m_table, &TableLayout::warned, this, &Browse::warned);
    m_clickPause.setSingleShot(true);
    connect(&m_clickPause, &QTimer::timeout, this, &Browse::clickingChanged);
    refresh();
}

void Browse::refresh() {
    if (isGrouped())
        m_games.setGroups(m_state.filteredGameGroups());
    else
        m_games.setGames(m_state.filteredGames());
    followSelection();
    Q_EMIT titleChanged();
    if (const bool filtered = isFiltered(); std::exchange(m_wasFiltered, filtered) != filtered)
        Q_EMIT filteredChanged();
}

void Browse::followSelection() {
    int row = -1;
    if (!m_state.selectedGameId().isEmpty())
        row = m_games.isGrouped() ? m_games.rowOfGroup(m_state.selectedGroupTitle(), m_currentRow)
                                  : m_games.rowOf(m_state.selectedGameId(), m_currentRow);
    if (std::exchange(m_currentRow, row) != row)
        Q_EMIT currentRowChanged();
    if (m_state.takeShouldScrollToSelection())
        Q_EMIT scrollWanted();
}

QString Browse::title() const {
    const BrowseQuery &query = m_state.query();
    if (query.recentlyPlayed)
        return QStringLiteral("Recently Played");
    if (!query.platform.isEmpty())
        return query.platform;
    for (const Playlist &playlist : m_state.gameLibrary().playlists())
        if (!query.playlistId.isEmpty() && playlist.id == query.playlistId)
            return playlist.name;
    if (const SmartCollection *collection = smartCollection(query.smartCollectionId))
        return collection->name;
    return query.favoritesOnly   ? QStringLiteral("Favorites")
           : query.installedOnly ? QStringLiteral("Installed")
                                 : QStringLiteral("All Games");
}

void Browse::select(const QString &gameId) {
    if (gameId != m_state.selectedGameId())
        m_state.setSelectedGameId(gameId);
    else
        followSelection();
}

void Browse::setCurrentRow(int row) {
    if (row >= 0 && row == m_currentRow)
        return select(m_state.selectedGameId());
    const GamePtr game = m_games.game(row);
    select(game ? game->id : QString());
}

void Browse::click(int row) {
    if (!m_games.game(row))
        return;
    m_clickPause.start(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    Q_EMIT clickingChanged();
    setCurrentRow(row);
    m_clickedGameId = m_state.selectedGameId();
}

bool Browse::doubleClick(int row) {
    if (!isClicking()) {
        click(row);
        return false;
    }
    select(m_clickedGameId);
    return true;
}

QString Browse::offer(int row) const {
    // Of a group, the variant that a click on it would select.
    const GamePtr game =
        row >= 0 && row == m_currentRow ? m_state.gameLibrary().game(m_state.selectedGameId()) : m_games.game(row);
    return game && GameActions::reasonAgainstPrimary(m_state, *game).isEmpty() ? GameActions::primaryOf(m_state, *game)
                                                                               : QString();
}

QString Browse::viewMode() const {
    return viewModeText(m_state.viewMode());
}

void Browse::setViewMode(const QString &text) {
    if (const auto mode = viewModeFromText(text)) {
        m_state.setViewMode(*mode);
        save();
    }
}

QString Browse::gridSize() const {
    return gridSizeText(m_state.gridSize());
}

void Browse::setGridSize(const QString &text) {
    if (const auto size = gridSizeFromText(text)) {
        m_state.setGridSize(*size);
        save();
    }
}

QString Browse::sortOrder() const {
    return sortOrderText(m_state.sortOrder());
}

void Browse::setSortOrder(const QString &text) {
    if (const auto order = sortOrderFromText(text)) {
        m_state.setSortOrder(*order);
        save();
    }
}

void Browse::setGrouped(bool grouped) {
    if (grouped != isGrouped()) {
        m_state.setGroupDuplicateGames(grouped);
        save();
    }
}

void Browse::save() {
    try {
        m_state.saveViewSettings();
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("Failed to save the view settings: %1").arg(reason));
        Q_EMIT warned(tr("The view is not kept for the next start: %1").arg(reason));
    }
}

bool Browse::isFiltered() const {
    BrowseQuery whole;
    whole.sortOrder = m_state.sortOrder();
    return m_state.query() != whole;
}

double Browse::gridWidth(double available) const {
    return ludarium::gridWidth(available, m_state.gridSize());
}

int Browse::gridColumns(double width) const {
    return fittingColumns(width, m_state.gridSize());
}

int Browse::columnsOfStep(double gridWidth) const {
    if (m_state.viewMode() != ViewMode::grid || !isGrouped())
        return 1;
    const GridSize size = m_state.gridSize();
    const int columns = gridWidth > 0 ? calculateActualColumns(gridWidth, size) : calculateEstimatedColumns(size);
    Log::debug(QStringLiteral("📐 Grid: width=%1, maxItem=%2, calculated columns=%3")
                   .arg(gridWidth)
                   .arg(cellWidths(size).maximum)
                   .arg(columns));
    return columns;
}

/// The coverflow goes through the games one by one even where it shows groups.
void Browse::move(Step step, int columns) {
    m_state.setShouldScrollToSelection();
    if (!isGrouped() || m_state.viewMode() != ViewMode::coverflow)
        return setCurrentRow(stepRow(step, m_currentRow, m_games.count(), columns));
    const GameList games = m_state.filteredGames();
    const auto current = std::find_if(games.begin(), games.end(),
                                      [this](const GamePtr &game) { return game->id == m_state.selectedGameId(); });
    const int row = stepRow(step, current == games.end() ? -1 : int(current - games.begin()), int(games.size()), 1);
    select(row < 0 ? QString() : games[row]->id);
}

void Browse::moveLeft() {
    move(Step::previous, 1);
}

void Browse::moveRight() {
    move(Step::next, 1);
}

void Browse::moveUp(double gridWidth) {
    move(Step::up, columnsOfStep(gridWidth));
}

void Browse::moveDown(double gridWidth) {
    move(Step::down, columnsOfStep(gridWidth));
}

void Browse::moveBy(int rows) {
    if (m_games.count() == 0)
        return;
    m_state.setShouldScrollToSelection();
    setCurrentRow(std::clamp(m_currentRow + rows, 0, m_games.count() - 1));
}

void Browse::showFavorites() {
    // What was played last stands above every other filter.
    BrowseQuery place = m_state.query();
    place.favoritesOnly = true;
    place.recentlyPlayed = false;
    m_state.goTo(place);
}

void Browse::showRecentlyPlayed() {
    m_state.setShowRecentlyPlayed(true);
}

void Browse::toggleInstalledOnly() {
    m_state.setShowInstalledOnly(!m_state.query().installedOnly);
}

void Browse::clearFilters() {
    m_state.clearFilters();
}

QString Browse::joined(QStringList parts, const QString &separator) {
    parts.removeAll(QString());
    return parts.join(separator);
}

bool Browse::selectTitle(const QString &title) {
    for (int row = 0; row < m_games.count(); ++row)
        for (const GamePtr &game : m_games.variants(row))
            if (game->title == title) {
                m_state.setShouldScrollToSelection();
                select(game->id);
                return true;
            }
    return false;
}

} // namespace ludarium
