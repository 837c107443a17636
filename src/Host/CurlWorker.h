#pragma once

#include "Host/CurlTransfer.h"

#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace ludarium {

/// The thread that runs every transfer of a client. It starts with the first one.
class CurlWorker {
  public:
    CurlWorker();
    ~CurlWorker();
    CurlWorker(const CurlWorker &) = delete;
    CurlWorker &operator=(const CurlWorker &) = delete;

    void add(std::shared_ptr<CurlTransfer> transfer);
    /// Makes the thread look at its transfers, one of which was cancelled.
    void wakeUp();
    /// Fails what still runs and ends the thread.
    void stop();

  private:
    void run();
    void startWaiting();
    void takeFinished();
    void dropCancelled();

    std::mutex m_mutex;
    std::vector<std::shared_ptr<CurlTransfer>> m_waiting;
    bool m_stopping = false;
    std::thread m_thread;

    CURLM *m_multi = nullptr;
    std::map<CURL *, std::shared_ptr<CurlTransfer>> m_running; ///< the thread's own
};

} // namespace ludarium
