#include "Host/Imaging/MemoryBudget.h"

#include <algorithm>

namespace ludarium {

namespace {

constexpr unsigned long lookAgain = 50; ///< milliseconds, for who waits and is stopped meanwhile

} // namespace

bool MemoryBudget::Share::claim(qint64 bytes) {
    const qint64 wanted = std::min(bytes, m_budget.m_total);
    const QMutexLocker lock(&m_budget.m_lock);
    m_budget.m_waiting.append(this);
    while (!m_stop.stop_requested() &&
           (m_budget.m_waiting.constFirst() != this || m_budget.m_taken + wanted > m_budget.m_total))
        m_budget.m_given.wait(&m_budget.m_lock, lookAgain);
    m_budget.m_waiting.removeOne(this);
    m_budget.m_given.wakeAll();
    if (m_stop.stop_requested())
        return false;
    m_taken = wanted;
    m_budget.m_taken += wanted;
    m_budget.m_mostTaken = std::max(m_budget.m_mostTaken, m_budget.m_taken);
    return true;
}

MemoryBudget::Share::~Share() {
    if (m_taken == 0)
        return;
    const QMutexLocker lock(&m_budget.m_lock);
    m_budget.m_taken -= m_taken;
    m_budget.m_given.wakeAll();
}

qint64 MemoryBudget::mostTaken() const {
    const QMutexLocker lock(&m_lock);
    return m_mostTaken;
}

} // namespace ludarium
