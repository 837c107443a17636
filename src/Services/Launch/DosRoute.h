#pragma once

#include "Models/GameVersionOption.h"
#include "Models/LaunchPlan.h"
#include "Services/Dos/DosLauncher.h"
#include "Services/Launch/LaunchCollaborators.h"

#include <QCoro/QCoroTask>
#include <optional>

namespace ludarium {

struct Host;
class EmulatorManager;

/// The way of a DOS game: which DOSBox build it goes to, whether that is there, and where the game lives.
/// Whoever starts one of its coroutines keeps it alive until that ends.
class DosRoute {
  public:
    DosRoute(Host &host, EmulatorManager &emulators, DosCollaborators collaborators);

    DosRouteCollaborators collaborators;

    QCoro::Task<std::optional<ProcessId>> launch(GamePtr game, QString collection,
                                                 std::optional<GameVersionOption> version);
    /// What `launch` would do, without questions. The decisions begin with those made here.
    QCoro::Task<LaunchPlan> plan(GamePtr game, QString collection, std::optional<GameVersionOption> version);

    /// Game folders with Roland MT-32 music that deserve a word when the machine cannot play it.
    static const QStringList &mt32SupportedGames();

  private:
    struct Choice {
        EmulatorType type = EmulatorType::vanilla;
        QString reason;
    };
    Choice chooseEmulator(const Game &game) const;
    std::optional<EmulatorRequirement> requirement(const Game &game) const;
    bool hasWindowsBuild(const Game &game, const QString &collection) const;

    QCoro::Task<std::optional<ProcessId>> launchWithStaging(GamePtr game, QString collection,
                                                            std::optional<GameVersionOption> version);
    QCoro::Task<std::optional<ProcessId>> launchWithDOSBoxX(GamePtr game, QString collection);
    QCoro::Task<std::optional<ProcessId>> launchWithWindowsBuild(GamePtr game, QString collection, EmulatorType type,
                                                                 std::optional<GameVersionOption> version);
    static DosLaunchRequest request(GamePtr game, const QString &collection, std::optional<GameVersionOption> version);

    Host &m_host;
    EmulatorManager &m_emulators;
    std::function<std::optional<QString>()> m_findDOSBox;
    DosLauncher m_launcher;
};

} // namespace ludarium
