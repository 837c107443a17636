#include "support/Heartbeat.h"

#include "support/Measured.h"

#include <QMetaObject>
#include <algorithm>

namespace ludarium {

Heartbeat::Heartbeat()
    : m_thread([this](const std::stop_token &stop) {
          while (!stop.stop_requested()) {
              if (!m_waiting) {
                  m_posted = milliseconds(CLOCK_MONOTONIC);
                  m_waiting = true;
                  QMetaObject::invokeMethod(this, &Heartbeat::beat, Qt::QueuedConnection);
              }
              const timespec millisecond{0, 1'000'000};
              ::nanosleep(&millisecond, nullptr);
          }
      }) {}

Heartbeat::~Heartbeat() {
    m_thread.request_stop();
    m_thread.join();
}

void Heartbeat::drawingStarts() {
    m_drawingSince = milliseconds(CLOCK_MONOTONIC);
}

void Heartbeat::drawingEnds() {
    const double now = milliseconds(CLOCK_MONOTONIC);
    m_drawings.append(now - m_drawingSince);
    if (m_waiting)
        m_drawn += now - std::max<double>(m_drawingSince, m_posted);
}

void Heartbeat::restart() {
    m_waits.clear();
    m_otherWaits.clear();
    m_drawings.clear();
}

void Heartbeat::beat() {
    const double wait = milliseconds(CLOCK_MONOTONIC) - m_posted;
    m_waits.append(wait);
    m_otherWaits.append(std::max(0.0, wait - m_drawn));
    m_drawn = 0;
    m_waiting = false;
}

QList<double> Heartbeat::sorted(QList<double> list) {
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace ludarium
