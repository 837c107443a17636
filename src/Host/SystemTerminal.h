#pragma once

#include "Host/Workspace.h"

namespace ludarium {

class HostPaths;

/// The terminal window of this machine: Terminal.app on macOS; on Linux `$TERMINAL`, else the first that is installed.
class SystemTerminal : public Terminal {
  public:
    explicit SystemTerminal(const HostPaths &paths);
    void run(const QString &script) override;

  private:
    const HostPaths &m_paths;
};

} // namespace ludarium
