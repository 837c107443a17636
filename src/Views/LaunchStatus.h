#pragma once

#include "Models/GameVersionOption.h"
#include "Models/LaunchPlan.h"
#include "Views/VersionPicker.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <optional>
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
    Q_PROPERTY(ludarium::VersionPicker *versions READ versions CONSTANT)
  public:
    explicit LaunchStatus(AppState &state, QObject *parent = nullptr);

    bool isLaunching() const;
    QString step() const;
    /// Why the selected game did not start; empty for every other game.
    QString error() const;
    QString gameId() const { return m_gameId; }
    VersionPicker *versions() { return &m_versions; }

    Q_INVOKABLE void playSelected();
    /// Does what the selected game needs next: plays it as `checkVersionsAndLaunch`, or installs or downloads it.
    Q_INVOKABLE void act();
    /// Plays the selected game after asking which version is meant, when there are several.
    Q_INVOKABLE void checkVersionsAndLaunch();
    /// Asks for a version whatever their number; tells when there is nothing to choose.
    Q_INVOKABLE void chooseVersion();
    /// Sets the selected game up, which installs it first when it is not.
    Q_INVOKABLE void setUpSelected();
    Q_INVOKABLE void installSelected();
    Q_INVOKABLE void downloadSelected();
    Q_INVOKABLE void openSelectedFolder();

  Q_SIGNALS:
    void changed();
    /// What was asked for does not happen, as the text says.
    void refused(const QString &text);

  private:
    bool refuseRunning(const QString &gameId);
    void startSelected(LaunchMode mode);
    QCoro::Task<> start(QString gameId, LaunchMode mode, std::optional<GameVersionOption> version = {});
    QCoro::Task<> pickVersion(QString gameId, bool mayLaunchAtOnce);
    QCoro::Task<> tell(QString title, QString text);

    AppState &m_state;
    VersionPicker m_versions;
    QString m_gameId;
    QString m_error;
    bool m_checking = false; ///< the versions of a game are being looked up
};

} // namespace ludarium
