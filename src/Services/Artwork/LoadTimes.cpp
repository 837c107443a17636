#include "Services/Artwork/LoadTimes.h"

#include "Host/AppLogger.h"

#include <algorithm>

namespace ludarium {

namespace {

constexpr qsizetype mostSamples = 20;
constexpr qsizetype fewestSamples = 5;
constexpr qint64 logEvery = 10;
constexpr double slowSeconds = 0.05;

QString milliseconds(double seconds) {
    return QString::number(seconds * 1000, 'f', 1);
}

} // namespace

bool LoadTimes::record(double seconds, bool diskCacheOn) {
    const QMutexLocker lock(&m_mutex);
    m_samples.append(seconds);
    if (m_samples.size() > mostSamples)
        m_samples.removeFirst();
    QList<double> sorted = m_samples;
    std::sort(sorted.begin(), sorted.end());
    const double median = sorted[sorted.size() / 2];
    if (++m_recorded % logEvery == 0)
        Log::debug(QStringLiteral("Thumbnail load times: median=%1ms, samples=%2, min=%3ms, max=%4ms")
                       .arg(milliseconds(median))
                       .arg(sorted.size())
                       .arg(milliseconds(sorted.first()), milliseconds(sorted.last())));
    if (m_samples.size() < fewestSamples || m_hasShownSlowLoadAlert || diskCacheOn || median <= slowSeconds)
        return false;
    m_hasShownSlowLoadAlert = true;
    return true;
}

QList<double> LoadTimes::samples() const {
    const QMutexLocker lock(&m_mutex);
    return m_samples;
}

} // namespace ludarium
