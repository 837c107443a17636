#include "Views/Browse.h"

#include "Host/AppLogger.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/SmartCollection.h"
#include "Views/GridGeometry.h"

#include <algorithm>

namespace ludarium {

Browse::Browse(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent)
    : QObject(parent), m_state(state), m_games(std::move(covers)) {
    connect(&state, &AppState::filteredGamesChanged, this, &Browse::refresh);
    connect(&state, &AppState::searchTextChanged, this, &Browse::searchTextChanged);
    connect(&state, &AppState::viewSettingsChanged, this, &Browse::viewSettingsChanged);
    connect(&state, &AppState::selectionChanged, this, [this] {
        followSelection();
        Q_EMIT titleChanged();
    });
    refresh();
}

void Browse::refresh() {
    m_games.setGames(m_state.filteredGames());
    followSelection();
    if (const bool filtered = isFiltered(); std::exchange(m_wasFiltered, filtered) != filtered)
        Q_EMIT filteredChanged();
}

void Browse::followSelection() {
    const int row = m_games.rowOf(m_state.selectedGameId());
    if (std::exchange(m_currentRow, row) != row)
        Q_EMIT currentRowChanged();
}

QString Browse::title() const {
    const BrowseQuery &query = m_state.query();
    if (query.recentlyPlayed)
        return QStringLiteral("Recently Played");
    if (!query.platform.isEmpty())
        return query.platform;
    for (const Playlist &playlist : m_state.gameLibrary().playlists())
        if (playlist.id == query.playlistId)
            return playlist.name;
    if (const SmartCollection *collection = smartCollection(query.smartCollectionId))
        return collection->name;
    return query.favoritesOnly   ? QStringLiteral("Favorites")
           : query.installedOnly ? QStringLiteral("Installed")
                                 : QStringLiteral("All Games");
}

void Browse::setCurrentRow(int row) {
    const GamePtr game = m_games.game(row);
    m_state.setSelectedGameId(game ? game->id : QString());
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

void Browse::save() {
    try {
        m_state.saveViewSettings();
    } catch (const std::exception &error) {
        Log::error(QStringLiteral("Failed to save the view settings: %1").arg(QString::fromUtf8(error.what())));
    }
}

bool Browse::isFiltered() const {
    BrowseQuery whole;
    whole.sortOrder = m_state.sortOrder();
    return m_state.query() != whole;
}

int Browse::columnsFor(double width) const {
    return gridColumns(width, m_state.gridSize());
}

int Browse::widestCell() const {
    return cellWidths(m_state.gridSize()).maximum;
}

/// Up and down go by a row of the grid while duplicates are grouped, and by one game otherwise.
int Browse::rowsPerStep(int columns) const {
    return m_state.viewMode() == ViewMode::grid && m_state.groupDuplicateGames() ? columns : 1;
}

void Browse::moveLeft() {
    setCurrentRow(stepRow(Step::previous, m_currentRow, m_games.count(), 1));
}

void Browse::moveRight() {
    setCurrentRow(stepRow(Step::next, m_currentRow, m_games.count(), 1));
}

void Browse::moveUp(int columns) {
    setCurrentRow(stepRow(Step::up, m_currentRow, m_games.count(), rowsPerStep(columns)));
}

void Browse::moveDown(int columns) {
    setCurrentRow(stepRow(Step::down, m_currentRow, m_games.count(), rowsPerStep(columns)));
}

void Browse::moveBy(int rows) {
    if (m_games.count() > 0)
        setCurrentRow(std::clamp(m_currentRow + rows, 0, m_games.count() - 1));
}

void Browse::clearFilters() {
    m_state.clearFilters();
}

bool Browse::selectTitle(const QString &title) {
    for (int row = 0; row < m_games.count(); ++row)
        if (m_games.game(row)->title == title) {
            setCurrentRow(row);
            return true;
        }
    return false;
}

} // namespace ludarium
