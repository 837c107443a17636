#pragma once

#include "Models/Game.h"

#include <QHash>
#include <QString>
#include <optional>

namespace ludarium {

class GameLibrary;

/// How many games stand behind each row of the sidebar, summed up once and kept along as single games change.
class LibraryCounts {
  public:
    explicit LibraryCounts(const GameLibrary &library) : m_library(library) {}

    struct Counts {
        int favorites = 0;
        QHash<QString, int> collections; ///< by the id of the smart collection
        QHash<QString, int> platforms;   ///< by name
    };
    const Counts &counts();

    /// The list of games is another one.
    void forget();
    /// The user's notes and ratings, or the platforms, are others.
    void forgetDetails() { m_counts.reset(); }
    /// One record was replaced.
    void replace(const Game &old, const Game &changed);

  private:
    struct Sums {
        int favorites = 0;
        int unplayed = 0;
        int played = 0;
        int installed = 0;
        int playing = 0;
        int beaten = 0;
        int completed = 0;

        void add(const Game &game, int by = 1);
    };
    void sumUp();

    const GameLibrary &m_library;
    std::optional<Sums> m_sums;
    std::optional<Counts> m_counts;
};

} // namespace ludarium
