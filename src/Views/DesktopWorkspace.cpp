#include "Views/DesktopWorkspace.h"

#include <QClipboard>
#include <QGuiApplication>

namespace ludarium {

void DesktopWorkspace::copyToClipboard(const QString &text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace ludarium
