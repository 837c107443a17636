#pragma once

#include "Models/EmulatorType.h"
#include "Models/Game.h"

#include <QCoro/QCoroTask>
#include <QList>
#include <QSet>
#include <QString>
#include <functional>
#include <optional>

namespace ludarium {

/// What the disk says about one game.
struct GameStatus {
    bool isInstalled = false;
    bool isCompressed = false;
    bool isDownloadable = false;
    OptionalText downloadSize = {};
    bool operator==(const GameStatus &) const = default;

    static GameStatus of(const Game &game) {
        return {game.isInstalled, game.isCompressed, game.isDownloadable, game.downloadSize};
    }
};

/// What the load of a collection asks of other rooms. An absent function stands for a service that is not there: its
/// step is passed over.
struct LibraryServices {
    /// What the first steps of a load want to know of the collection's setup.
    struct Setup {
        bool needsSetup = false;
        QStringList incomplete; ///< display names of the sets whose metadata was only partly extracted
    };
    std::function<bool()> isSettingUp;
    /// Blocking, for the thread pool.
    std::function<Setup(const QString &collection)> setupStatus;
    std::function<QCoro::Task<bool>(QString collection)> promptSetup;
    /// Throws what it cannot do.
    std::function<QCoro::Task<>(QString collection)> runSetup;
    std::function<QCoro::Task<bool>(QString collection, QString name)> promptRepair;
    std::function<QCoro::Task<>(QString collection, QString name)> repairMetadataExtraction;

    /// Databases of the collection that are in memory before its games are looked at. Blocking, for the thread pool.
    std::function<void(const QString &collection)> loadScummVMDatabase;
    std::function<void(const QString &collection)> loadDownloadIndex;
    std::function<void(const QString &collection)> loadRequirements;
    std::function<QCoro::Task<>(QString collection)> ensureDownloadIndex;

    struct Requirement {
        EmulatorType type;
        QString version;
    };
    std::function<std::optional<Requirement>(const QString &title)> requirement;

    /// The status of every game of a list, in its order. Blocking, for the thread pool.
    std::function<QList<GameStatus>(const GameList &games, const QString &collection)> checkStatus;
    /// The status of one game by a look of its own; none when the game cannot be looked for. Blocking.
    std::function<std::optional<GameStatus>(const GamePtr &game, const QString &collection)> checkGame;

    /// Hands the loaded games to the desktop's search.
    std::function<void(const GameList &games, const QString &collection)> indexForDesktopSearch;

    /// Normalised titles of the games that are known to play MT-32 music.
    std::function<QSet<QString>()> mt32Titles;
};

} // namespace ludarium
