#pragma once

#include "Models/Game.h"
#include "Models/ViewSettings.h"
#include "Services/Library/BrowseQuery.h"
#include "Services/Library/GameGroup.h"
#include "Services/Library/LibraryServices.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>
#include <memory>
#include <utility>

namespace ludarium {

struct Host;
class BatchOperationsManager;
class EmulatorManager;
class GameExceptionsManager;
class GameLauncher;
class GameLibrary;
class ImageLoader;
class LibraryBrowser;
class PlatformGroupManager;
class PlaySessionTracker;
class PrerequisitesManager;
class VersionCheck;
struct LaunchDatabases;

/// The global state of the interface, one for the life of the process. Assigning a collection path is the one road by
/// which a collection reaches the program.
class AppState : public QObject {
    Q_OBJECT
  public:
    /// Creates the library and the launcher and restores the settings. `restoreCollection` then brings back the
    /// folder of the last run; it is a call of its own so that the command line can name another folder.
    AppState(Host &host, EmulatorManager &emulators, const LaunchDatabases &databases, LibraryServices services = {},
             QObject *parent = nullptr);
    ~AppState() override;

    GameLibrary &gameLibrary() { return *m_library; }
    GameLauncher &gameLauncher() { return *m_launcher; }
    /// What stands between the Play button and the launcher.
    const VersionCheck &versionCheck() const { return *m_versionCheck; }
    /// What is known to be special about some games.
    const GameExceptionsManager &exceptions() const { return *m_exceptions; }
    /// Pictures, videos, manuals and music of games.
    ImageLoader &imageLoader() { return *m_images; }
    LibraryBrowser &browser() { return *m_browser; }
    PlatformGroupManager &platformGroups() { return *m_platformGroups; }
    PlaySessionTracker &sessionTracker() { return *m_tracker; }
    BatchOperationsManager &batchOperations() { return *m_batchOperations; }
    EmulatorManager &emulators() { return m_emulators; }
    PrerequisitesManager &prerequisites() { return *m_prerequisites; }
    Host &host() { return m_host; }

    /// Opens the folder of the last run, also when it is not there: the library knows what it held. False when there
    /// is none.
    bool restoreCollection();
    /// Whether the open folder is the one of the last run, which nobody chose in this one.
    bool isCollectionRestored() const { return m_isRestored; }
    /// Empty when there is none.
    QString collectionPath() const { return m_collectionPath; }
    /// Remembers the folder, tells everybody and loads it. An empty path does nothing.
    void setCollectionPath(const QString &path);

    ViewMode viewMode() const { return m_viewMode; }
    GridSize gridSize() const { return m_gridSize; }
    SortOrder sortOrder() const { return m_query.sortOrder; }
    bool groupDuplicateGames() const { return m_groupDuplicateGames; }
    void setViewMode(ViewMode mode);
    void setGridSize(GridSize size);
    void setSortOrder(SortOrder order);
    void setGroupDuplicateGames(bool group);
    void saveViewSettings();

    QString selectedGameId() const { return m_selectedGameId; }
    void setSelectedGameId(const QString &id);
    /// The title that the selected game's duplicates share, as `GameGroup::normalize` gives it; empty without a
    /// selection.
    QString selectedGroupTitle() const { return m_selectedGroupTitle; }
    /// The shown group that the selected game belongs to; none when it is not shown.
    std::optional<GameGroup> selectedGameGroup() const;
    /// A request to the main view, good for once, to bring the selection into view.
    void setShouldScrollToSelection() { m_shouldScrollToSelection = true; }
    bool takeShouldScrollToSelection() { return std::exchange(m_shouldScrollToSelection, false); }
    /// What the search field holds, at every key stroke.
    QString searchText() const { return m_searchText; }
    /// Reaches the filter when no other text came for 0.15 seconds; an empty text at once.
    void setSearchText(const QString &text);

    /// What the main view is narrowed to. Nothing of it is kept from run to run but the sort order.
    const BrowseQuery &query() const { return m_query; }
    QString debouncedSearchText() const { return m_query.search; }
    QString selectedPlatform() const { return m_query.platform; }
    // An empty text, or no year, is no filter.
    void setSelectedPlatform(const QString &name) { narrow(&BrowseQuery::platform, name); }
    void setSelectedPlaylist(const QString &id) { narrow(&BrowseQuery::playlistId, id); }
    void setSelectedSmartCollection(const QString &id) { narrow(&BrowseQuery::smartCollectionId, id); }
    void setSelectedGenre(const QString &genre) { narrow(&BrowseQuery::genre, genre); }
    void setSelectedDeveloper(const QString &developer) { narrow(&BrowseQuery::developer, developer); }
    void setSelectedPublisher(const QString &publisher) { narrow(&BrowseQuery::publisher, publisher); }
    void setSelectedYear(std::optional<int> year) { narrow(&BrowseQuery::year, year); }
    void setShowFavoritesOnly(bool only) { narrow(&BrowseQuery::favoritesOnly, only); }
    void setShowInstalledOnly(bool only) { narrow(&BrowseQuery::installedOnly, only); }
    void setShowRecentlyPlayed(bool show) { narrow(&BrowseQuery::recentlyPlayed, show); }
    /// The whole library narrowed to one place of it, in one change. Its search text and sort order do not count.
    void goTo(BrowseQuery place);
    /// Back to the whole library; the selected game, the search text and the sort order stay.
    void clearFilters();

    /// The games to show now, in display order.
    GameList filteredGames() const;
    /// The same with duplicates folded.
    QList<GameGroup> filteredGameGroups() const;

  Q_SIGNALS:
    void collectionPathChanged();
    /// The open folder could not be remembered for the next start.
    void collectionPathRefused(const QString &reason);
    void viewSettingsChanged();
    void selectionChanged();
    void searchTextChanged();
    void filteredGamesChanged();

  private:
    void collectionChanged(const QString &oldPath);
    QCoro::Task<> loadThenCopyPictures(QString path);
    void setQuery(const BrowseQuery &query);
    template<typename T, typename Value>
    void narrow(T BrowseQuery::*field, const Value &value) {
        BrowseQuery query = m_query;
        query.*field = value;
        setQuery(query);
    }

    Host &m_host;
    EmulatorManager &m_emulators;
    std::unique_ptr<GameLibrary> m_library;
    std::unique_ptr<ImageLoader> m_images;
    std::unique_ptr<LibraryBrowser> m_browser;
    std::unique_ptr<PlatformGroupManager> m_platformGroups;
    std::unique_ptr<GameLauncher> m_launcher;
    std::unique_ptr<VersionCheck> m_versionCheck;
    std::shared_ptr<const GameExceptionsManager> m_exceptions;
    std::unique_ptr<PlaySessionTracker> m_tracker;
    std::unique_ptr<BatchOperationsManager> m_batchOperations;
    std::unique_ptr<PrerequisitesManager> m_prerequisites;
    QString m_collectionPath;
    bool m_isRestored = false;
    ViewMode m_viewMode = ViewMode::grid;
    GridSize m_gridSize = GridSize::medium;
    bool m_groupDuplicateGames = true;
    QString m_selectedGameId;
    QString m_selectedGroupTitle;
    bool m_shouldScrollToSelection = false;
    QString m_searchText;
    QTimer m_searchDebounce;
    BrowseQuery m_query;
};

} // namespace ludarium
