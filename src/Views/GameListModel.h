#pragma once

#include "Models/Game.h"

#include <QAbstractListModel>
#include <memory>
#include <qqmlregistration.h>

namespace ludarium {

class CoverStore;

/// The games that are shown, in their order. Rows are made when they come on screen; the model itself only holds the
/// shared records.
class GameListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)
  public:
    enum Role {
        idRole = Qt::UserRole + 1,
        titleRole,
        platformRole,
        yearRole,
        developerRole,
        genreRole,
        coverRole,
        initialsRole,
        hueRole,
        favoriteRole,
        installedRole
    };

    explicit GameListModel(std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_games.size()); }
    /// Takes a new list. The same games in the same order only announce the rows whose records changed, so that the
    /// view keeps its place.
    void setGames(GameList games);
    /// None outside the list.
    /// The addresses of the covers have changed.
    void renewCovers();
    GamePtr game(int row) const;
    /// -1 when the game is not shown.
    int rowOf(const QString &gameId) const;

  Q_SIGNALS:
    void countChanged();

  private:
    bool hasSameGames(const GameList &games) const;

    std::shared_ptr<CoverStore> m_covers;
    GameList m_games;
};

} // namespace ludarium
