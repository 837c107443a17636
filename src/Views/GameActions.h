#pragma once

#include "Models/Game.h"

#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;
enum class LaunchMode;

/// What can be done with the selected game. Where something cannot be done, the reason is a text for its tooltip.
class GameActions : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString primary READ primary NOTIFY changed)
    Q_PROPERTY(QString primaryReason READ primaryReason NOTIFY changed)
    Q_PROPERTY(QString downloadSize READ downloadSize NOTIFY changed)
    Q_PROPERTY(QString playReason READ playReason NOTIFY changed)
    Q_PROPERTY(QString versionsReason READ versionsReason NOTIFY changed)
    Q_PROPERTY(QString setupReason READ setupReason NOTIFY changed)
    Q_PROPERTY(QString folderReason READ folderReason NOTIFY changed)
  public:
    explicit GameActions(AppState &state, QObject *parent = nullptr);

    /// Null for no game.
    void setGame(const GamePtr &game);

    /// What a game needs next: "play", "install" or "download", or "running" while it does.
    static QString primaryOf(AppState &state, const Game &game);
    /// Why that cannot be done; empty when it can.
    static QString reasonAgainstPrimary(AppState &state, const Game &game);

    /// Empty without a game.
    QString primary() const;
    QString primaryReason() const;
    /// For people; empty when it is not known.
    QString downloadSize() const;
    QString playReason() const;
    QString versionsReason() const;
    QString setupReason() const;
    QString folderReason() const;

  Q_SIGNALS:
    void changed();

  private:
    AppState &m_state;
    GamePtr m_game;
};

} // namespace ludarium
