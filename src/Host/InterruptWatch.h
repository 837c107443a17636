#pragma once

#include <QList>
#include <QObject>
#include <csignal>

namespace ludarium {

/// Catches signals that ask the program to end (Ctrl-C alone, unless others are named) while it exists and tells them
/// on the event loop; afterwards they end the program again. One at a time.
class InterruptWatch : public QObject {
    Q_OBJECT
  public:
    explicit InterruptWatch(QList<int> signalNumbers = {SIGINT});
    ~InterruptWatch() override;

  Q_SIGNALS:
    void interrupted();

  private:
    const QList<int> m_signalNumbers;
};

} // namespace ludarium
