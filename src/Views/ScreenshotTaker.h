#pragma once

#include <QObject>
#include <QTimer>

class QQuickWindow;

namespace ludarium {

class Desktop;

/// Saves a picture of a window once the collection is loaded and every cover on screen has come.
class ScreenshotTaker : public QObject {
    Q_OBJECT
  public:
    /// `select`: the title of a game to select first, empty for none.
    ScreenshotTaker(QQuickWindow &window, Desktop &desktop, QString file, QString select, QObject *parent = nullptr);

  Q_SIGNALS:
    void finished(bool saved);

  private:
    bool isQuiet() const;
    void look();

    QQuickWindow &m_window;
    Desktop &m_desktop;
    QString m_file;
    QString m_select;
    QTimer m_timer;
    int m_looks = 0;
    int m_quietLooks = 0;
};

} // namespace ludarium
