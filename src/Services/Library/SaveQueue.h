#pragma once

#include <QString>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace ludarium {

/// Saves in the background, one after the other in the order in which they were posted, so that an older state never
/// lands after a newer one. The jobs run on the thread pool, and outlive the queue.
class SaveQueue {
  public:
    /// Takes the place of a save of the same `name` that has not begun; an empty name never does.
    void post(const QString &name, std::function<void()> save);
    /// Runs a function behind all that was posted before, on the calling thread, which must be one of the pool. May
    /// outlive the queue.
    std::function<void(const std::function<void()> &)> runner() const {
        return [state = m_state](const std::function<void()> &function) { State::drainThen(state, function); };
    }

  private:
    struct Save {
        QString name;
        std::function<void()> save;
    };
    struct State {
        std::mutex waitingMutex;
        std::deque<Save> waiting;
        std::mutex running; ///< held while a save runs
        static void drainThen(const std::shared_ptr<State> &state, const std::function<void()> &function);
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace ludarium
