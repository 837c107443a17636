#include "Services/Library/SaveQueue.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"

#include <QThreadPool>
#include <algorithm>

namespace ludarium {

void SaveQueue::post(const QString &name, std::function<void()> save) {
    {
        const std::lock_guard lock(m_state->waitingMutex);
        std::deque<Save> &waiting = m_state->waiting;
        const auto same = std::find_if(waiting.begin(), waiting.end(),
                                       [&](const Save &other) { return !name.isEmpty() && other.name == name; });
        if (same != waiting.end())
            waiting.erase(same);
        waiting.push_back({name, std::move(save)});
    }
    QThreadPool::globalInstance()->start([state = m_state] { State::drainThen(state, {}); });
}

void SaveQueue::State::drainThen(const std::shared_ptr<State> &state, const std::function<void()> &function) {
    const std::lock_guard lock(state->running);
    for (;;) {
        Save next;
        {
            const std::lock_guard waitingLock(state->waitingMutex);
            if (state->waiting.empty())
                break;
            next = std::move(state->waiting.front());
            state->waiting.pop_front();
        }
        try {
            next.save();
        } catch (...) {
            Log::error(QStringLiteral("❌ Saving in the background: %1").arg(currentExceptionText()));
        }
    }
    if (function)
        function();
}

} // namespace ludarium
