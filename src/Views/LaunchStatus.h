#pragma once

#include "Models/LaunchPlan.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// Starting the selected game, and what came of it.
class LaunchStatus : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool launching READ isLaunching NOTIFY changed)
    Q_PROPERTY(QString gameId READ gameId NOTIFY changed)
    Q_PROPERTY(QString step READ step NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
  public:
    explicit LaunchStatus(AppState &state, QObject *parent = nullptr);

    bool isLaunching() const;
    QString step() const;
    /// Why the selected game did not start; empty for every other game.
    QString error() const;
    QString gameId() const { return m_gameId; }

    Q_INVOKABLE void playSelected();
    /// Sets the selected game up, which installs it first when it is not.
    Q_INVOKABLE void setUpSelected();
    Q_INVOKABLE void openSelectedFolder();

  Q_SIGNALS:
    void changed();

  private:
    QCoro::Task<> start(QString gameId, LaunchMode mode);
    QCoro::Task<> tell(QString title, QString text);

    AppState &m_state;
    QString m_gameId;
    QString m_error;
};

} // namespace ludarium
