#pragma once

#include "Models/Game.h"

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The rows of the sidebar: all games first, then the platforms by name, each with the number of its games.
class SidebarModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)
    Q_PROPERTY(int platformCount READ platformCount NOTIFY countsChanged)
  public:
    enum Role { nameRole = Qt::UserRole + 1, sectionRole, iconRole, gamesRole };

    explicit SidebarModel(AppState &state, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int currentRow() const;
    int platformCount() const { return int(m_rows.size()) - 1; }
    Q_INVOKABLE void select(int row);

  Q_SIGNALS:
    void currentRowChanged();
    void countsChanged();

  private:
    struct Row {
        QString platform; ///< empty: all games
        int games = 0;
        bool operator==(const Row &) const = default;
    };
    static QList<Row> makeRows(const GameList &games, const QStringList &platforms);
    QCoro::Task<> recount();
    void setRows(QList<Row> rows);

    AppState &m_state;
    QList<Row> m_rows{Row{}};
    int m_generation = 0;
};

} // namespace ludarium
