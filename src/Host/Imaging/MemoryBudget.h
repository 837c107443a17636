#pragma once

#include <QList>
#include <QMutex>
#include <QWaitCondition>
#include <stop_token>

namespace ludarium {

/// Memory that the threads which decode pictures share: who needs more than is left waits for the others. Those who
/// wait are served in the order in which they came, so that a large picture is not passed over for ever. For any
/// thread.
class MemoryBudget {
  public:
    explicit MemoryBudget(qint64 total) : m_total(total) {}

    /// What one picture takes, given back when it goes. Claims at most once: who waits holds nothing.
    class Share {
      public:
        Share(MemoryBudget &budget, std::stop_token stop) : m_budget(budget), m_stop(std::move(stop)) {}
        ~Share();
        Share(const Share &) = delete;
        Share &operator=(const Share &) = delete;
        /// Waits until so much is left; more than there is altogether counts as all of it. False when stopped.
        bool claim(qint64 bytes);

      private:
        MemoryBudget &m_budget;
        std::stop_token m_stop;
        qint64 m_taken = 0;
    };

    qint64 total() const { return m_total; }
    /// The most that was taken at any moment.
    qint64 mostTaken() const;

  private:
    const qint64 m_total;
    mutable QMutex m_lock; ///< guards what follows
    QWaitCondition m_given;
    qint64 m_taken = 0;
    qint64 m_mostTaken = 0;
    QList<const Share *> m_waiting;
};

} // namespace ludarium
