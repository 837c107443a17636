#include "Views/ScreenshotTaker.h"

#include "Host/AppLogger.h"
#include "Views/Desktop.h"

#include <QQuickWindow>

namespace ludarium {

namespace {

constexpr int lookInterval = 50; ///< milliseconds
/// Looks in a row that must find nothing moving: covers are asked for one frame after their cells are made.
constexpr int quietLooksWanted = 8;
constexpr int mostLooks = 10 * 60 * 1000 / lookInterval;

} // namespace

ScreenshotTaker::ScreenshotTaker(QQuickWindow &window, Desktop &desktop, QString file, QString select, QObject *parent)
    : QObject(parent), m_window(window), m_desktop(desktop), m_file(std::move(file)), m_select(std::move(select)) {
    m_timer.setInterval(lookInterval);
    connect(&m_timer, &QTimer::timeout, this, &ScreenshotTaker::look);
    m_timer.start();
}

bool ScreenshotTaker::isQuiet() const {
    return m_window.isExposed() && !m_desktop.library()->isLoading() && !m_desktop.start()->isVisible() &&
           m_desktop.pendingPictures() == 0;
}

void ScreenshotTaker::look() {
    m_quietLooks = isQuiet() ? m_quietLooks + 1 : 0;
    if (m_quietLooks == 1 && !m_select.isEmpty()) {
        if (!m_desktop.browse()->selectTitle(m_select))
            Log::warning(QStringLiteral("No game is called \"%1\"").arg(m_select));
        m_select.clear();
    }
    if (m_quietLooks < quietLooksWanted && ++m_looks < mostLooks)
        return;
    m_timer.stop();
    if (m_quietLooks < quietLooksWanted)
        Log::error(QStringLiteral("The window did not come to rest; its picture may lack something"));
    Q_EMIT finished(m_window.grabWindow().save(m_file));
}

} // namespace ludarium
