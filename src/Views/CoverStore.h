#pragma once

#include "Models/Game.h"

#include <QHash>
#include <QMutex>
#include <memory>
#include <optional>

namespace ludarium {

class CoverFinder;

/// Gives games the addresses of their covers, and leads from an address back to the game. Models ask for visible rows
/// only, so the store holds what was once on screen.
class CoverStore {
  public:
    CoverStore();
    ~CoverStore();

    /// Forgets everything that was known of another collection.
    void setCollection(const QString &collection);

    /// `image://cover/{generation}/{number}`, the same for the same game until the collection changes.
    QString url(const GamePtr &game);

    struct Source {
        GamePtr game;
        std::shared_ptr<CoverFinder> finder;
    };
    /// What `{generation}/{number}` stands for; none for an address of another collection. Any thread.
    std::optional<Source> source(const QString &address) const;

  private:
    mutable QMutex m_mutex;
    int m_generation = 0;
    std::shared_ptr<CoverFinder> m_finder;
    QHash<QString, int> m_numbers;
    GameList m_games;
};

} // namespace ludarium
