#pragma once

#include <QList>
#include <QMutex>

namespace ludarium {

/// How long the latest thumbnails took, and whether that is slow enough to ask the user about a copy on the local
/// disk: once a run, and not while that copy is on. Any thread.
class LoadTimes {
  public:
    /// Takes the seconds of one load; true when the user is to be asked now.
    bool record(double seconds, bool diskCacheOn);
    QList<double> samples() const;

  private:
    mutable QMutex m_mutex;
    QList<double> m_samples; ///< oldest first
    qint64 m_recorded = 0;
    bool m_hasShownSlowLoadAlert = false;
};

} // namespace ludarium
