#pragma once

#include "Models/Game.h"
#include "Services/Library/GameGroup.h"

#include <QAbstractListModel>
#include <functional>
#include <memory>
#include <qqmlregistration.h>

namespace ludarium {

class CoverStore;

/// The games that are shown, or the groups of duplicates that stand for them, in their order. Rows are made when they
/// come on screen; the model itself only holds the shared records.
class GameListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)
  public:
    enum Role {
        idRole = Qt::UserRole + 1,
        titleRole,
        platformRole, ///< of a group, each of its platforms once
        yearRole,
        developerRole,
        genreRole,
        ratingRole, ///< the community's, in the user's locale; empty without one
        playCountRole,
        lastPlayedRole,
        playTimeRole,
        statusRole,
        coverRole,
        initialsRole,
        hueRole,
        favoriteRole, ///< of a group, whether one of its games is
        variantsRole, ///< number of games of a group, 1 for a game
        badgesRole,   ///< the marks of its cover, see BadgeImageProvider; empty without one
        spokenRole    ///< all that a cell shows, for a screen reader
    };

    explicit GameListModel(std::shared_ptr<CoverStore> covers, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return int(m_grouped ? m_groups.size() : m_games.size()); }
    bool isGrouped() const { return m_grouped; }
    /// Takes a new list. The same games in the same order only announce the rows whose records changed, so that the
    /// view keeps its place.
    void setGames(GameList games);
    void setGroups(QList<GameGroup> groups);
    /// How a game that runs is told from others; without it none does.
    void setRunningTest(std::function<bool(const QString &gameId)> isRunning) { m_isRunning = std::move(isRunning); }
    /// Other games run than before.
    void renewRunning();
    /// The addresses of the covers have changed.
    void renewCovers();
    /// The game of a row, or the one that stands for its group. None outside the list.
    GamePtr game(int row) const;
    /// The games of a row, one without groups.
    GameList variants(int row) const;
    /// -1 when the game is not shown. A row near `hint` is found at once.
    int rowOf(const QString &gameId, int hint = -1) const;
    int rowOfGroup(const QString &normalizedTitle, int hint = -1) const;

  Q_SIGNALS:
    void countChanged();

  private:
    template<typename List, typename Same, typename Unchanged>
    void replace(List &shown, List list, bool grouped, const Same &isSame, const Unchanged &isUnchanged);

    bool isRunning(int row) const;

    std::shared_ptr<CoverStore> m_covers;
    std::function<bool(const QString &gameId)> m_isRunning;
    bool m_grouped = false;
    GameList m_games;
    QList<GameGroup> m_groups;
};

} // namespace ludarium
