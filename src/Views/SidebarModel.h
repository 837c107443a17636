#pragma once

#include "Host/Settings.h"
#include "Models/Game.h"
#include "Views/SidebarRow.h"

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The rows of the sidebar that are on show, each with the number of its games. A change of the library reaches the
/// rows once in a turn of the event loop and touches only those that differ.
class SidebarModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)
    Q_PROPERTY(QString currentKey READ currentKey NOTIFY currentKeyChanged)
    Q_PROPERTY(int platformCount READ platformCount NOTIFY rowsChanged)
    Q_PROPERTY(int count READ count NOTIFY rowsChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(bool sortByCount READ isSortedByCount WRITE setSortByCount NOTIFY sortByCountChanged)
    Q_PROPERTY(bool shown READ isShown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(int width READ width WRITE setWidth NOTIFY widthChanged)
  public:
    enum Role {
        nameRole = Qt::UserRole + 1,
        kindRole, ///< "section", "place", "collection", "playlist", "group" or "platform"
        idRole,
        iconRole,
        gamesRole,
        depthRole,
        expandableRole,
        expandedRole,
    };

    explicit SidebarModel(AppState &state, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_rows.size()); }
    /// The row of what the main view shows; -1 when it is not on show.
    int currentRow() const { return m_currentRow; }
    /// The same, whether it is on show or not.
    QString currentKey() const { return m_currentKey; }
    int platformCount() const { return int(m_source.platforms.size()); }
    QString filter() const { return m_filter; }
    void setFilter(const QString &filter);
    bool isSortedByCount() const { return m_source.sortByCount; }
    void setSortByCount(bool byCount);
    // Of the sidebar itself; kept from run to run.
    bool isShown() const;
    void setShown(bool shown);
    /// Pixels at a text scale of 1; 0 when the user never chose one.
    int width() const;
    void setWidth(int width);

    /// Shows the games of the row. A section or a group opens or closes instead.
    Q_INVOKABLE void activate(int row);
    /// Shows the games of the row, if it stands for any.
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void setExpanded(int row, bool expanded);
    Q_INVOKABLE void setAllExpanded(bool expanded);
    /// The row that this one stands below; -1 for a section.
    Q_INVOKABLE int parentRow(int row) const;
    /// The next row from `start` on, round the end, whose name begins with the text; -1 when there is none.
    Q_INVOKABLE int rowStartingWith(const QString &text, int start) const;
    Q_INVOKABLE QString keyOf(int row) const;
    Q_INVOKABLE int rowOf(const QString &key) const;

    /// The row that what is dropped on `target` goes to: a group, or the section for no group; -1 when it may not be
    /// dropped there. A group takes the place of the group that it is dropped on.
    Q_INVOKABLE int dropRow(const QString &source, int target) const;
    Q_INVOKABLE void drop(const QString &source, int target);

  Q_SIGNALS:
    void currentRowChanged();
    void currentKeyChanged();
    void rowsChanged();
    void filterChanged();
    void sortByCountChanged();
    void shownChanged();
    void widthChanged();
    void warned(const QString &text);

  private:
    using Kind = SidebarRow::Kind;

    template<typename T>
    void keep(const Setting<T> &setting, const T &value);

    void refreshSoon();
    void refresh();
    void rebuild();
    void show();
    void setRows(QList<SidebarRow> rows);
    void followSelection();
    bool isCurrent(const SidebarRow &row) const;
    void keepCollapsed();
    QCoro::Task<> countPlaylists();
    void settingChanged(const QString &key);

    AppState &m_state;
    SidebarSource m_source;
    QStringList m_platforms; ///< as the library has them
    QList<SidebarRow> m_all;
    QList<SidebarRow> m_rows; ///< on show
    QString m_filter;
    int m_currentRow = -1;
    QString m_currentKey;
    bool m_refreshing = false;
    int m_wholeChanges = 0; ///< of the list of games, since the playlists were counted
    int m_generation = 0;
};

} // namespace ludarium
