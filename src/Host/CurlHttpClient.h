#pragma once

#include "Host/HttpClient.h"

#include <memory>

namespace ludarium {

class CurlWorker;

/// HttpClient on libcurl: every exchange runs on one worker thread, and the awaiting coroutine resumes on its own.
/// When the client is destroyed, what still runs fails with HttpError.
class CurlHttpClient : public HttpClient {
  public:
    struct Limits {
        std::chrono::seconds connect{10};
        std::chrono::seconds stall{30}; ///< without one byte in either direction
    };

    CurlHttpClient();
    explicit CurlHttpClient(Limits limits);
    ~CurlHttpClient() override;

    QCoro::Task<HttpResponse> send(HttpRequest request, std::stop_token stop = {}) override;
    QCoro::Task<HttpResponse> download(HttpRequest request, QString file, Progress progress = {},
                                       std::stop_token stop = {}) override;

  private:
    Limits m_limits;
    std::shared_ptr<CurlWorker> m_worker;
};

} // namespace ludarium
