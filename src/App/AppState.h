#pragma once

#include "Models/Game.h"
#include "Models/ViewSettings.h"
#include "Services/Library/LibraryServices.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <memory>

namespace ludarium {

struct Host;
class BatchOperationsManager;
class EmulatorManager;
class GameLauncher;
class GameLibrary;
class LibraryBrowser;
class PlaySessionTracker;
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
    LibraryBrowser &browser() { return *m_browser; }
    PlaySessionTracker &sessionTracker() { return *m_tracker; }
    BatchOperationsManager &batchOperations() { return *m_batchOperations; }
    Host &host() { return m_host; }

    void restoreCollection();
    /// Empty when there is none.
    QString collectionPath() const { return m_collectionPath; }
    /// Remembers the folder, tells everybody and loads it. An empty path does nothing.
    void setCollectionPath(const QString &path);

    ViewMode viewMode() const { return m_viewMode; }
    GridSize gridSize() const { return m_gridSize; }
    SortOrder sortOrder() const { return m_sortOrder; }
    bool groupDuplicateGames() const { return m_groupDuplicateGames; }
    void setViewMode(ViewMode mode);
    void setGridSize(GridSize size);
    void setSortOrder(SortOrder order);
    void setGroupDuplicateGames(bool group);
    void saveViewSettings();

    QString selectedGameId() const { return m_selectedGameId; }
    void setSelectedGameId(const QString &id);
    QString selectedPlatform() const { return m_selectedPlatform; }
    void setSelectedPlatform(const QString &name);
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    /// The games that selection and search leave, in sort order.
    GameList filteredGames() const;

  Q_SIGNALS:
    void collectionPathChanged();
    void viewSettingsChanged();
    void selectionChanged();
    void filteredGamesChanged();

  private:
    void collectionChanged(const QString &oldPath);

    Host &m_host;
    std::unique_ptr<GameLibrary> m_library;
    std::unique_ptr<LibraryBrowser> m_browser;
    std::unique_ptr<GameLauncher> m_launcher;
    std::unique_ptr<VersionCheck> m_versionCheck;
    std::unique_ptr<PlaySessionTracker> m_tracker;
    std::unique_ptr<BatchOperationsManager> m_batchOperations;
    QString m_collectionPath;
    ViewMode m_viewMode = ViewMode::grid;
    GridSize m_gridSize = GridSize::medium;
    SortOrder m_sortOrder = SortOrder::title;
    bool m_groupDuplicateGames = true;
    QString m_selectedGameId;
    QString m_selectedPlatform;
    QString m_searchText;
};

} // namespace ludarium
