#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QTemporaryDir>

namespace ludarium::test {

/// A screen of 1280 by 800 without a monitor (Xvfb), with a keyboard and a mouse that xdotool moves.
class VirtualScreen {
  public:
    ~VirtualScreen();

    static bool isInstalled();
    bool start();
    QString display() const { return m_display; }

    /// Waits for a window of this title and gives it the keyboard, as no window manager does.
    bool waitForWindow(const QString &title);
    /// Waits until the picture has not changed for a while.
    bool waitForRest();

    /// Keys by their X names: "ctrl+f", "Down".
    void key(const char *name);
    void type(const char *text);
    /// Button 1 is the left one, 3 the right one.
    void click(QPoint where, int button);
    /// As a hand does it: with a pause in which a program can show what the first click changed.
    void doubleClick(QPoint where);

    QImage picture() const;
    /// Into `{build}/screenshots`.
    void save(const char *name) const;

  private:
    QByteArray xdotool(const QStringList &arguments);

    QTemporaryDir m_folder;
    QProcess m_server;
    QString m_display;
};

} // namespace ludarium::test
