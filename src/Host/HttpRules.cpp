#include "Host/HttpRules.h"

#include "Host/HttpClient.h"

#include <QHostAddress>

namespace ludarium {

bool isLoopback(const QUrl &url) {
    const QString host = url.host();
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

QString httpUrlProblem(const QUrl &url) {
    if (!url.isValid() || url.host().isEmpty())
        return QStringLiteral("The address is not valid");
    const QString scheme = url.scheme();
    if (scheme == QLatin1String("https") || (scheme == QLatin1String("http") && isLoopback(url)))
        return {};
    if (scheme == QLatin1String("http"))
        return QStringLiteral("%1: only encrypted connections (https) are made").arg(httpOrigin(url));
    return QStringLiteral("Addresses that begin with \"%1:\" are not allowed").arg(scheme);
}

QString httpRedirectProblem(const QUrl &from, const QUrl &to) {
    if (const QString problem = httpUrlProblem(to); !problem.isEmpty())
        return problem;
    if (isLoopback(to) && !isLoopback(from))
        return QStringLiteral("%1 redirects to this machine, which is not allowed").arg(httpOrigin(from));
    return {};
}

QString httpOrigin(const QUrl &url) {
    return url.toString(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

QByteArray HttpResponse::header(const QByteArray &name) const {
    for (const auto &[key, value] : headers)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

} // namespace ludarium
