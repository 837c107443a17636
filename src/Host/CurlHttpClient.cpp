#include "Host/CurlHttpClient.h"

#include "Host/Async.h"
#include "Host/CurlWorker.h"

namespace ludarium {

namespace {

/// Holds the worker and the transfer itself: the client may be gone before the answer comes.
QCoro::Task<HttpResponse> perform(std::shared_ptr<CurlWorker> worker, std::shared_ptr<CurlTransfer> transfer,
                                  std::stop_token stop) {
    const std::stop_callback cancel(stop, [weakWorker = std::weak_ptr(worker), transfer] {
        transfer->cancel();
        if (const auto alive = weakWorker.lock())
            alive->wakeUp();
    });
    const QFuture<void> finished = transfer->finished();
    worker->add(transfer);
    worker.reset();
    co_await finished;
    transfer->endProgress();
    HttpResponse response = transfer->takeResponse();
    co_return response;
}

} // namespace

CurlHttpClient::CurlHttpClient() : CurlHttpClient(Limits()) {}

CurlHttpClient::CurlHttpClient(Limits limits) : m_limits(limits), m_worker(std::make_shared<CurlWorker>()) {}

CurlHttpClient::~CurlHttpClient() {
    m_worker->stop();
}

QCoro::Task<HttpResponse> CurlHttpClient::send(HttpRequest request, std::stop_token stop) {
    return perform(m_worker, std::make_shared<CurlTransfer>(std::move(request), m_limits), std::move(stop));
}

QCoro::Task<HttpResponse> CurlHttpClient::download(HttpRequest request, QString file, Progress progress,
                                                   std::stop_token stop) {
    auto transfer = std::make_shared<CurlTransfer>(std::move(request), m_limits, std::move(file), std::move(progress));
    HttpResponse response = co_await perform(m_worker, transfer, stop);
    // Flushing a large file takes its time, and another thread's.
    auto commit = [transfer] { transfer->commitFile(); };
    co_await runOnPool(commit);
    co_return response;
}

} // namespace ludarium
