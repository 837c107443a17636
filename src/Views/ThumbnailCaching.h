#pragma once

#include <QCoro/QCoroTask>
#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;
template<typename T>
struct Setting;

/// How far the copying of all covers to the local disk is; and, when covers come slowly, the question whether to
/// begin with it.
class ThumbnailCaching : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
  public:
    explicit ThumbnailCaching(AppState &state, QObject *parent = nullptr);

    bool isRunning() const;
    double progress() const; ///< 0 to 1
    QString status() const;

    /// Without asking, slow covers raise no question.
    void setAsking(bool asking) { m_asking = asking; }
    /// Turns the copies on and makes them all.
    Q_INVOKABLE void start();
    Q_INVOKABLE void cancel();

  Q_SIGNALS:
    void changed();
    /// Something was not saved.
    void warned(const QString &text);

  private:
    bool keep(const Setting<bool> &setting);
    QCoro::Task<> offer();
    QCoro::Task<> copyAll();

    AppState &m_state;
    bool m_asking = true;
};

} // namespace ludarium
