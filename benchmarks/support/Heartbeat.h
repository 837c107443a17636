#pragma once

#include <QList>
#include <QObject>
#include <atomic>
#include <thread>

namespace ludarium {

/// How long the main thread keeps its events waiting. A thread posts it an event each millisecond, unless the last one
/// still waits, and how long each has waited is noted.
class Heartbeat : public QObject {
    Q_OBJECT
  public:
    Heartbeat();
    ~Heartbeat() override;

    /// What lies between these two is counted apart: the drawing, which is a thread of its own on a graphics card.
    void drawingStarts();
    void drawingEnds();

    /// Forgets what was measured.
    void restart();
    /// Milliseconds, sorted; of all beats since the last restart.
    QList<double> waits() const { return sorted(m_waits); }
    QList<double> waitsWithoutDrawing() const { return sorted(m_otherWaits); }
    QList<double> drawings() const { return sorted(m_drawings); }

  private:
    void beat();
    static QList<double> sorted(QList<double> list);

    // Only touched by the main thread.
    QList<double> m_waits, m_otherWaits, m_drawings;
    double m_drawingSince = 0;
    double m_drawn = 0; ///< since the beat that waits was posted
    std::atomic<double> m_posted = 0;
    std::atomic<bool> m_waiting = false;
    std::jthread m_thread; ///< last, so that it ends first
};

} // namespace ludarium
