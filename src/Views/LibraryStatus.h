#pragma once

#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// How far the library is: what the status bar, the overlays and the empty states are about.
class LibraryStatus : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(bool loading READ isLoading NOTIFY changed)
    Q_PROPERTY(QString step READ step NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY changed)
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    Q_PROPERTY(QString unavailable READ unavailable NOTIFY changed)
    Q_PROPERTY(int gameCount READ gameCount NOTIFY changed)
  public:
    explicit LibraryStatus(AppState &state, QObject *parent = nullptr);

    /// "none" without a collection, "loading" before the first games are there, "away" when it cannot be looked at and
    /// nothing is known of it, "error", "empty", else "ready".
    QString state() const;
    bool isLoading() const;
    QString step() const;
    double progress() const;
    QString errorMessage() const;
    QString folder() const;
    /// What of the collection cannot be looked at, while the games stand as they were last seen; empty when all can.
    QString unavailable() const;
    int gameCount() const;

  Q_SIGNALS:
    void changed();

  private:
    AppState &m_state;
};

} // namespace ludarium
