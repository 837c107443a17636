#pragma once

#include <QCoro/QCoroTask>
#include <QObject>
#include <QTimer>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The games that run now, whichever of our programs started them, and the way to end one.
class RunningStatus : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool selected READ isSelectedRunning NOTIFY changed)
    Q_PROPERTY(QString elapsed READ elapsed NOTIFY changed)
    Q_PROPERTY(bool stopping READ isStopping NOTIFY changed)
  public:
    explicit RunningStatus(AppState &state, QObject *parent = nullptr);

    /// What runs, in one line; empty while nothing does.
    QString text() const;
    bool isSelectedRunning() const;
    /// How long the selected game has run; empty when it does not.
    QString elapsed() const;
    /// Whether the selected game was asked to end and has not yet.
    bool isStopping() const;

    /// Asks, as what the game has not saved is lost, and then asks the game's own process to end.
    Q_INVOKABLE void stopSelected();

  Q_SIGNALS:
    void changed();
    void warned(const QString &text);

  private:
    void follow();
    QCoro::Task<> stop(QString gameId);
    QString titleOf(const QString &gameId) const;

    AppState &m_state;
    QTimer m_second;
    QString m_stopping; ///< id of the game that was asked to end
};

} // namespace ludarium
