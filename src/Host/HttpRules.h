#pragma once

#include <QUrl>

namespace ludarium {

/// Whether the host of `url` is this machine by its very name: "localhost" or a loopback address.
bool isLoopback(const QUrl &url);

/// Why a request to `url` must not be made, empty when it may: HTTPS anywhere, plain HTTP on loopback only.
QString httpUrlProblem(const QUrl &url);

/// The same for a redirect. A server elsewhere must not send the program to a service of this machine.
QString httpRedirectProblem(const QUrl &from, const QUrl &to);

/// Where `url` goes, fit for logs and errors: scheme, host and port, without what may hold a secret.
QString httpOrigin(const QUrl &url);

} // namespace ludarium
