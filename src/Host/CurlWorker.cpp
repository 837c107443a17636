#include "Host/CurlWorker.h"

namespace ludarium {

namespace {

/// libcurl's own state is made once, before any thread uses it, and kept to the end of the program.
void initialiseCurl() {
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    Q_UNUSED(result)
}

QString closingText() {
    return QStringLiteral("The request was cancelled: the program is closing");
}

} // namespace

CurlWorker::CurlWorker() {
    initialiseCurl();
    m_multi = curl_multi_init();
}

CurlWorker::~CurlWorker() {
    stop();
    curl_multi_cleanup(m_multi);
}

void CurlWorker::add(std::shared_ptr<CurlTransfer> transfer) {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_stopping) {
            m_waiting.push_back(std::move(transfer));
            if (!m_thread.joinable())
                m_thread = std::thread([this] { run(); });
        }
    }
    if (transfer)
        transfer->fail(closingText());
    else
        wakeUp();
}

void CurlWorker::wakeUp() {
    curl_multi_wakeup(m_multi);
}

void CurlWorker::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    wakeUp();
    if (m_thread.joinable())
        m_thread.join();
}

void CurlWorker::run() {
    while (true) {
        {
            const std::lock_guard lock(m_mutex);
            if (m_stopping)
                break;
        }
        startWaiting();
        int running = 0;
        curl_multi_perform(m_multi, &running);
        takeFinished();
        dropCancelled();
        // Ends at once when a socket is ready, a time-out of libcurl's is due, or on wakeUp.
        curl_multi_poll(m_multi, nullptr, 0, 1000, nullptr);
    }
    for (const auto &[handle, transfer] : m_running) {
        curl_multi_remove_handle(m_multi, handle);
        transfer->fail(closingText());
    }
    m_running.clear();
    for (const auto &transfer : m_waiting)
        transfer->fail(closingText());
    m_waiting.clear();
}

void CurlWorker::startWaiting() {
    std::vector<std::shared_ptr<CurlTransfer>> waiting;
    {
        const std::lock_guard lock(m_mutex);
        waiting.swap(m_waiting);
    }
    for (auto &transfer : waiting) {
        if (!transfer->begin())
            continue;
        CURL *handle = transfer->handle();
        curl_multi_add_handle(m_multi, handle);
        m_running.emplace(handle, std::move(transfer));
    }
}

void CurlWorker::takeFinished() {
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL *handle = message->easy_handle;
        const CURLcode result = message->data.result;
        curl_multi_remove_handle(m_multi, handle); // `message` is gone now
        const auto found = m_running.find(handle);
        if (found->second->advance(result))
            curl_multi_add_handle(m_multi, handle);
        else
            m_running.erase(found);
    }
}

void CurlWorker::dropCancelled() {
    for (auto it = m_running.begin(); it != m_running.end();) {
        if (!it->second->isCancelled()) {
            ++it;
            continue;
        }
        curl_multi_remove_handle(m_multi, it->first);
        it->second->advance(CURLE_ABORTED_BY_CALLBACK);
        it = m_running.erase(it);
    }
}

} // namespace ludarium
