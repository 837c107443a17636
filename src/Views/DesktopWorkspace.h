#pragma once

#include "Host/PlainWorkspace.h"

namespace ludarium {

/// The desktop with the real clipboard, which only a program with a window has.
class DesktopWorkspace : public PlainWorkspace {
  public:
    using PlainWorkspace::PlainWorkspace;
    void copyToClipboard(const QString &text) override;
};

} // namespace ludarium
