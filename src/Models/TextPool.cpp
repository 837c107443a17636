#include "Models/TextPool.h"

#include "Models/FieldText.h"

namespace ludarium {

TextPool::Entry TextPool::shared(std::string_view utf8) {
    if (utf8.empty() || utf8.size() > maxPooledLength)
        return {fieldText(utf8), searchForm(utf8)};
    if (const auto found = m_entries.find(utf8); found != m_entries.end())
        return found->second;

    Entry entry;
    if (m_upstream) {
        const std::scoped_lock lock(m_upstream->m_mutex);
        entry = m_upstream->shared(utf8);
    } else {
        entry = {fieldText(utf8), searchForm(utf8)};
    }
    return m_entries.emplace(std::string(utf8), std::move(entry)).first->second;
}

} // namespace ludarium
