#pragma once

#include "Services/Dos/GameException.h"

#include <memory>

namespace ludarium {

struct Host;

/// The table of games that need something no general rule gives them: ours, then the user's own from the setting
/// "customGameExceptions". Read once.
class GameExceptionsManager {
  public:
    explicit GameExceptionsManager(const Host &host);
    GameExceptionsManager(GameExceptionsManager &&) noexcept;
    ~GameExceptionsManager();

    const QList<GameException> &exceptions() const; ///< ours
    const QList<GameException> &customExceptions() const;

    /// Those that fit a title: ours first, then the user's, each once.
    QList<GameException> getExceptions(const QString &title) const;
    std::optional<EmulatorOverride> getEmulatorOverride(const QString &title) const;
    /// DOSBox keys and values; those of a later exception win.
    QMap<QString, QString> getConfigOverrides(const QString &title) const;
    /// For each key of `getConfigOverrides`, the id of the exception that its value comes from.
    QMap<QString, QString> configOverrideOrigins(const QString &title) const;

  private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ludarium
