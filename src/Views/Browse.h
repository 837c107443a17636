#pragma once

#include "App/AppState.h"
#include "Views/GameListModel.h"

#include <qqmlregistration.h>

namespace ludarium {

/// What the main view shows and how: the list, the search text as it is typed, the selection and the view settings.
class Browse : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(ludarium::GameListModel *games READ games CONSTANT)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentRowChanged)
    Q_PROPERTY(QString viewMode READ viewMode WRITE setViewMode NOTIFY viewSettingsChanged)
    Q_PROPERTY(QString gridSize READ gridSize WRITE setGridSize NOTIFY viewSettingsChanged)
    Q_PROPERTY(QString sortOrder READ sortOrder WRITE setSortOrder NOTIFY viewSettingsChanged)
    Q_PROPERTY(int widestCell READ widestCell NOTIFY viewSettingsChanged)
    Q_PROPERTY(bool filtered READ isFiltered NOTIFY filteredChanged)
  public:
    Browse(AppState &state, std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);

    GameListModel *games() { return &m_games; }
    /// The place of the library that is shown: a platform, a playlist, a collection; "All Games" when there is none.
    QString title() const;
    QString searchText() const { return m_state.searchText(); }
    void setSearchText(const QString &text) { m_state.setSearchText(text); }
    int currentRow() const { return m_currentRow; }
    /// Selects the game of the row; -1 selects none.
    void setCurrentRow(int row);
    /// "List", "Grid" or "Coverflow"; a text that is none of them changes nothing. The same for size and order.
    QString viewMode() const;
    void setViewMode(const QString &text);
    QString gridSize() const;
    void setGridSize(const QString &text);
    QString sortOrder() const;
    void setSortOrder(const QString &text);
    bool isFiltered() const;

    Q_INVOKABLE int columnsFor(double width) const;
    int widestCell() const;
    /// Keyboard moves; `columns` is the number of columns on screen.
    Q_INVOKABLE void moveLeft();
    Q_INVOKABLE void moveRight();
    Q_INVOKABLE void moveUp(int columns);
    Q_INVOKABLE void moveDown(int columns);
    /// Up or down by `rows`, at most to the first or last game.
    Q_INVOKABLE void moveBy(int rows);
    Q_INVOKABLE void clearFilters();
    /// Selects the first shown game of this title; false when there is none.
    bool selectTitle(const QString &title);

  Q_SIGNALS:
    void titleChanged();
    void searchTextChanged();
    void currentRowChanged();
    void viewSettingsChanged();
    void filteredChanged();

  private:
    void refresh();
    void followSelection();
    void save();
    int rowsPerStep(int columns) const;

    AppState &m_state;
    GameListModel m_games;
    int m_currentRow = -1;
    bool m_wasFiltered = false;
};

} // namespace ludarium
