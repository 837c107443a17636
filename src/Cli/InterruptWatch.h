#pragma once

#include <QObject>

namespace ludarium {

/// Catches Ctrl-C (SIGINT) while it exists and tells it on the event loop; afterwards Ctrl-C ends the program again.
/// One at a time.
class InterruptWatch : public QObject {
    Q_OBJECT
  public:
    InterruptWatch();
    ~InterruptWatch() override;

  Q_SIGNALS:
    void interrupted();
};

} // namespace ludarium
