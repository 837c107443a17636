#pragma once

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QTimer>
#include <optional>

class QWindow;

namespace ludarium {

class HostPaths;

/// Brings the main window back where it was: the file `mainWindow.frame` among the program's small state.
class WindowFramePersistence : public QObject {
    Q_OBJECT
  public:
    explicit WindowFramePersistence(const HostPaths &paths, QObject *parent = nullptr);
    /// Writes what is not written yet.
    ~WindowFramePersistence() override;

    /// The saved frame, brought on to one of these screens (their usable parts); none without a readable file.
    std::optional<QRectF> restore(const QList<QRectF> &screens) const;
    /// From now on each move and resize is written, once it has come to rest.
    void startObserving(QWindow &window);

    QString file() const { return m_file; }

  private:
    void save();

    QString m_file;
    QTimer m_rest;
    QPointer<QWindow> m_window;
    QRectF m_frame;
};

} // namespace ludarium
