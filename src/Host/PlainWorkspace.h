#pragma once

#include "Host/Workspace.h"

namespace ludarium {

class HostPaths;

/// The desktop through its own command line programs: `open` on macOS, `xdg-open` and the file manager's D-Bus
/// interface on Linux. There is no clipboard without a window: texts to copy are logged.
class PlainWorkspace : public Workspace {
  public:
    explicit PlainWorkspace(const HostPaths &paths);

    /// Addresses of the web and of mail; a "file" address is opened as `openFile` does, any other is refused.
    bool openUrl(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool openWith(const QString &application, const QStringList &paths) override;
    bool reveal(const QString &path) override;
    void copyToClipboard(const QString &text) override;

  private:
    /// Hands a path or an address to its default application.
    bool open(const QString &target) const;
    bool start(const QString &program, const QStringList &arguments) const;

    const HostPaths &m_paths;
};

} // namespace ludarium
