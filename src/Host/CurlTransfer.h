#pragma once

#include "Host/CurlHttpClient.h"

#include <QFuture>
#include <QPromise>
#include <atomic>
#include <curl/curl.h>

namespace ludarium {

/// One request with its redirects. Made on the caller's thread, driven by the worker's, read again by the caller
/// once `finished()` has finished.
class CurlTransfer {
  public:
    static constexpr int maxRedirects = 5;

    /// With a `file`, the body of a 200 answer goes to a temporary neighbour of it.
    CurlTransfer(HttpRequest request, CurlHttpClient::Limits limits, QString file = {},
                 HttpClient::Progress progress = {});
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer &) = delete;
    CurlTransfer &operator=(const CurlTransfer &) = delete;

    // --- the caller's side
    QFuture<void> finished() { return m_promise.future(); }
    void cancel() { m_cancelled = true; }
    /// The answer; throws HttpError when there is none.
    HttpResponse takeResponse();
    /// Flushes the body to disk and renames it over the file; does nothing unless the answer was a 200. Throws
    /// HttpError.
    void commitFile();
    /// No progress is reported any more.
    void endProgress();

    // --- the worker's side
    CURL *handle() const { return m_curl; }
    /// Prepares the first exchange; false when the request cannot be made (then it is finished).
    bool begin();
    /// Takes the end of one exchange; true when a redirect makes the handle ready for another one.
    bool advance(CURLcode result);
    bool isCancelled() const { return m_cancelled; }
    void fail(const QString &problem);

  private:
    struct Relay; // progress on its way to the main thread

    void prepare();
    bool follow(const QUrl &target);
    void finish();
    QString fail(CURLcode result) const;
    bool openFile();
    void dropFile();
    void reportProgress(qint64 received, qint64 total, bool last);

    size_t takeBody(const char *data, size_t size);
    void takeHeader(QByteArray line);
    bool takeProgress(qint64 received, qint64 total, qint64 sent);
    static size_t onBody(char *data, size_t size, size_t count, void *self);
    static size_t onHeader(char *data, size_t size, size_t count, void *self);
    static int onProgress(void *self, curl_off_t total, curl_off_t received, curl_off_t, curl_off_t sent);
    static curl_socket_t onOpenSocket(void *self, curlsocktype, curl_sockaddr *address);

    HttpRequest m_request; ///< of the exchange that runs: a redirect changes it
    const QString m_firstOrigin;
    const CurlHttpClient::Limits m_limits;
    const QString m_file;
    QString m_temporaryFile;
    int m_descriptor = -1;

    CURL *m_curl = nullptr;
    curl_slist *m_headerList = nullptr;
    char m_errorText[CURL_ERROR_SIZE] = {};
    std::chrono::steady_clock::time_point m_deadline;
    int m_redirects = 0;
    qint64 m_bodySize = 0;
    qint64 m_lastBytes = 0; ///< received and sent when they last changed
    std::chrono::steady_clock::time_point m_lastChange;

    HttpResponse m_response;
    QString m_problem;
    std::atomic<bool> m_cancelled = false;
    std::shared_ptr<Relay> m_relay;
    std::chrono::steady_clock::time_point m_lastReport;
    QPromise<void> m_promise;
    bool m_finished = false;
};

} // namespace ludarium
