#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace ludarium {

/// The desktop around the program. Each call returns whether the desktop took the request.
class Workspace {
  public:
    virtual ~Workspace() = default;
    virtual bool openUrl(const QUrl &url) = 0;
    /// Opens a document with its default application. Scripts, programs and `.desktop` files are refused.
    virtual bool openFile(const QString &path) = 0;
    /// Opens files with one application: a bundle path on macOS, a program on Linux.
    virtual bool openWith(const QString &application, const QStringList &paths) = 0;
    /// Shows the file or folder in the file manager.
    virtual bool reveal(const QString &path) = 0;
    virtual void copyToClipboard(const QString &text) = 0;
};

/// Shows a script to the user in a terminal window.
class Terminal {
  public:
    virtual ~Terminal() = default;
    /// Opens a terminal that runs `script` (an executable file). Throws ProcessError when none can be opened.
    virtual void run(const QString &script) = 0;
};

} // namespace ludarium
