#pragma once

#include "Models/Game.h"

#include <QHash>
#include <QMutex>
#include <optional>

namespace ludarium {

/// Gives games the addresses of their covers, and leads from an address back to the game. Models ask for visible rows
/// only, so the store holds what was once on screen.
class CoverStore {
  public:
    /// Forgets everything that was known; every address becomes another one, so that what is shown is asked for again.
    void setCollection(const QString &collection);

    /// `image://cover/{generation}/{number}`, the same for the same game until `setCollection`.
    QString url(const GamePtr &game);

    struct Source {
        GamePtr game;
        QString collection;
    };
    /// What `{generation}/{number}` stands for; none for an address of before. Any thread.
    std::optional<Source> source(const QString &address) const;

  private:
    mutable QMutex m_mutex;
    int m_generation = 0;
    QString m_collection;
    QHash<QString, int> m_numbers;
    GameList m_games;
};

} // namespace ludarium
