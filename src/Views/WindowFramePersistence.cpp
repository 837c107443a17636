#include "Views/WindowFramePersistence.h"

#include "App/WindowFrame.h"
#include "Host/AppLogger.h"
#include "Host/HostPaths.h"
#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QWindow>

namespace ludarium {

namespace {

constexpr int restMilliseconds = 400;

} // namespace

WindowFramePersistence::WindowFramePersistence(const HostPaths &paths, QObject *parent)
    : QObject(parent), m_file(paths.state() + QStringLiteral("/mainWindow.frame")) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &WindowFramePersistence::save);
}

WindowFramePersistence::~WindowFramePersistence() {
    if (m_rest.isActive())
        save();
}

std::optional<QRectF> WindowFramePersistence::restore(const QList<QRectF> &screens) const {
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const std::optional<QRectF> frame = WindowFrame::fromText(file.read(256));
    return frame ? std::optional(WindowFrame::onScreen(*frame, screens)) : std::nullopt;
}

void WindowFramePersistence::startObserving(QWindow &window) {
    m_window = &window;
    const auto noteFrame = [this] {
        // A maximised window's size is the screen's, not one that the user chose.
        if (!m_window || !m_window->isVisible() ||
            m_window->windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen))
            return;
        m_frame = m_window->geometry();
        m_rest.start();
    };
    connect(&window, &QWindow::xChanged, this, noteFrame);
    connect(&window, &QWindow::yChanged, this, noteFrame);
    connect(&window, &QWindow::widthChanged, this, noteFrame);
    connect(&window, &QWindow::heightChanged, this, noteFrame);
}

void WindowFramePersistence::save() {
    m_rest.stop();
    QDir().mkpath(QFileInfo(m_file).path());
    if (const QString reason = writeAtomically(m_file, WindowFrame::toText(m_frame)); !reason.isEmpty())
        Log::warning(QStringLiteral("The window's frame could not be saved: %1").arg(reason));
}

} // namespace ludarium
