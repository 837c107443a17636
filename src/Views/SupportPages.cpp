#include "Views/SupportPages.h"

#include "Host/Workspace.h"

#include <QUrl>

namespace ludarium {

SupportPages::SupportPages(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_addresses{
                                                   {QStringLiteral("help"), QStringLiteral(LUDARIUM_HELP_PAGE)},
                                                   {QStringLiteral("bug"), QStringLiteral(LUDARIUM_BUG_PAGE)},
                                                   {QStringLiteral("support"), QStringLiteral(LUDARIUM_SUPPORT_PAGE)},
                                                   {QStringLiteral("quiz"), QStringLiteral(LUDARIUM_QUIZ_PAGE)},
                                               } {}

bool SupportPages::isAvailable(const QString &page) const {
    const QUrl url(m_addresses.value(page));
    return url.isValid() && url.scheme() == QLatin1StringView("https");
}

void SupportPages::open(const QString &page) {
    if (isAvailable(page))
        m_workspace.openUrl(QUrl(m_addresses.value(page)));
}

} // namespace ludarium
