#pragma once

#include <QCoro/QCoroTask>
#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The splash screen over the main window, from the first moment until the library stops loading.
class StartScreen : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool visible READ isVisible NOTIFY visibleChanged)
  public:
    explicit StartScreen(AppState &state, QObject *parent = nullptr) : QObject(parent), m_state(state) {}

    bool isVisible() const { return m_visible; }
    /// Starts the wait; one of the two signals comes at its end when the user has to choose something.
    void begin();
    /// Without asking, neither signal comes.
    void setAsking(bool asking) { m_asking = asking; }
    /// What the user has to know before anything else, told when the splash is gone; nothing when it is empty.
    void setNotice(const QString &text) { m_notice = text; }
    /// The first-run assistant is through and comes no more.
    Q_INVOKABLE void completeFirstRun();

  Q_SIGNALS:
    void visibleChanged();
    void firstRunNeeded();
    void folderNeeded();
    void warned(const QString &text);

  private:
    QCoro::Task<> run();

    AppState &m_state;
    bool m_visible = true;
    bool m_asking = true;
    QString m_notice;
};

} // namespace ludarium
