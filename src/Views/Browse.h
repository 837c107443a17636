#pragma once

#include "App/AppState.h"
#include "Views/FacetFilter.h"
#include "Views/GameListModel.h"
#include "Views/TableLayout.h"

#include <QTimer>
#include <qqmlregistration.h>

namespace ludarium {

enum class Step;

/// What the main view shows and how: the list, the search text as it is typed, the selection and the view settings.
class Browse : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(ludarium::GameListModel *games READ games CONSTANT)
    Q_PROPERTY(ludarium::FacetFilter *facets READ facets CONSTANT)
    Q_PROPERTY(ludarium::TableLayout *table READ table CONSTANT)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentRowChanged)
    Q_PROPERTY(QString viewMode READ viewMode WRITE setViewMode NOTIFY viewSettingsChanged)
    Q_PROPERTY(QString gridSize READ gridSize WRITE setGridSize NOTIFY viewSettingsChanged)
    Q_PROPERTY(QString sortOrder READ sortOrder WRITE setSortOrder NOTIFY viewSettingsChanged)
    Q_PROPERTY(bool grouped READ isGrouped WRITE setGrouped NOTIFY viewSettingsChanged)
    Q_PROPERTY(bool filtered READ isFiltered NOTIFY filteredChanged)
    Q_PROPERTY(bool clicking READ isClicking NOTIFY clickingChanged)
  public:
    Browse(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);

    GameListModel *games() { return &m_games; }
    FacetFilter *facets() { return &m_facets; }
    TableLayout *table() { return &m_table; }
    /// The name of the selected platform, playlist or collection, else of the toggle that holds, else "All Games".
    QString title() const;
    QString searchText() const { return m_state.searchText(); }
    void setSearchText(const QString &text) { m_state.setSearchText(text); }
    /// The row of the selected game or of its group; -1 when it is not shown.
    int currentRow() const { return m_currentRow; }
    /// Selects the game of the row; -1 selects none. Of a group whose game is selected already that one stays.
    void setCurrentRow(int row);
    /// "List", "Grid" or "Coverflow"; a text that is none of them changes nothing. The same for size and order.
    QString viewMode() const;
    void setViewMode(const QString &text);
    QString gridSize() const;
    void setGridSize(const QString &text);
    QString sortOrder() const;
    void setSortOrder(const QString &text);
    bool isGrouped() const { return m_state.groupDuplicateGames(); }
    void setGrouped(bool grouped);
    bool isFiltered() const;

    /// Whether a game was clicked and a second click may follow: until then nothing moves from under the pointer.
    bool isClicking() const { return m_clickPause.isActive(); }
    /// Selects the game of the row that was clicked.
    Q_INVOKABLE void click(int row);
    /// The second click of two, on whatever is under the pointer by now. True when the first one was on a game, which
    /// is selected then and meant; otherwise this is the first click on the game of the row.
    Q_INVOKABLE bool doubleClick(int row);

    /// What a button on the cover of a row can do with its game, in the words of GameActions::primaryOf; empty when
    /// there is nothing.
    Q_INVOKABLE QString offer(int row) const;

    /// The part of a view's width that the grid takes, how many columns it has there and the width of their cells.
    Q_INVOKABLE double gridWidth(double available) const;
    Q_INVOKABLE int gridColumns(double width) const;
    /// Keyboard moves. `gridWidth` is the width of the grid on screen; 0 when it is not known, and outside the grid.
    Q_INVOKABLE void moveLeft();
    Q_INVOKABLE void moveRight();
    Q_INVOKABLE void moveUp(double gridWidth);
    Q_INVOKABLE void moveDown(double gridWidth);
    /// Up or down by `rows`, at most to the first or last game.
    Q_INVOKABLE void moveBy(int rows);
    Q_INVOKABLE void showFavorites();
    Q_INVOKABLE void showRecentlyPlayed();
    Q_INVOKABLE void toggleInstalledOnly();
    Q_INVOKABLE void clearFilters();
    /// The parts that are not empty.
    Q_INVOKABLE static QString joined(QStringList parts, const QString &separator);
    /// Selects the first shown game of this title; false when there is none.
    bool selectTitle(const QString &title);

  Q_SIGNALS:
    void titleChanged();
    void searchTextChanged();
    void currentRowChanged();
    void viewSettingsChanged();
    void filteredChanged();
    void clickingChanged();
    void warned(const QString &text);
    /// The selection was moved and is to be brought into view.
    void scrollWanted();
    /// The rows are to become others, and have become so.
    void listAboutToBeReplaced();
    void listReplaced();

  private:
    void refresh();
    void followSelection();
    void save();
    void move(Step step, int columns);
    int columnsOfStep(double gridWidth) const;
    void select(const QString &gameId);

    AppState &m_state;
    GameListModel m_games;
    FacetFilter m_facets;
    TableLayout m_table;
    int m_currentRow = -1;
    bool m_wasFiltered = false;
    QString m_clickedGameId;
    QTimer m_clickPause;
};

} // namespace ludarium
