#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QList>
#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <stop_token>
#include <utility>

namespace ludarium {

/// Size limits for what a request may answer.
namespace HttpLimit {
inline constexpr qint64 json = 16LL << 20;
inline constexpr qint64 image = 32LL << 20;
inline constexpr qint64 torrent = 64LL << 20;
} // namespace HttpLimit

struct HttpRequest {
    QUrl url;
    QByteArray method = "GET";
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    std::chrono::milliseconds timeout{60'000}; ///< for the whole exchange; 0 means none
    qint64 limit = HttpLimit::json;            ///< bytes of the answer's body that are accepted
};

struct HttpResponse {
    int status = 0;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    QByteArray header(const QByteArray &name) const; ///< case-insensitive; empty when absent
};

/// No answer: refused, timed out, too large, a scheme that is not allowed. `what()` tells, in UTF-8.
class HttpError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// HTTP through libcurl. HTTPS only, plain HTTP for loopback, also after each of at most 5 redirects; connect within
/// 10 s, no stall over 30 s. A status of any value is an answer, not an error.
class HttpClient {
  public:
    virtual ~HttpClient() = default;

    virtual QCoro::Task<HttpResponse> send(HttpRequest request, std::stop_token stop = {}) = 0;

    /// Bytes received so far and in all (-1 when not known). Called on the main thread.
    using Progress = std::function<void(qint64 received, qint64 total)>;

    /// Writes the body of a 200 answer to `file` through a temporary neighbour; any other outcome leaves `file` as
    /// it was. The returned response has no body.
    virtual QCoro::Task<HttpResponse> download(HttpRequest request, QString file, Progress progress = {},
                                               std::stop_token stop = {}) = 0;
};

} // namespace ludarium
