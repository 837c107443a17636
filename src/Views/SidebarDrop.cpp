#include "Views/SidebarDrop.h"

#include <algorithm>

namespace ludarium {

using Kind = SidebarRow::Kind;

SidebarDrop::SidebarDrop(const QList<SidebarRow> &rows, const QString &source, int target)
    : m_rows(rows), m_from(sidebarRowOf(rows, source)), m_row(rowFor(target)) {}

int SidebarDrop::rowFor(int target) const {
    if (m_from < 0 || target < 0 || target >= m_rows.size())
        return -1;
    int place = target;
    while (place >= 0 && m_rows[place].kind == Kind::platform)
        place = sidebarParent(m_rows, place);
    if (place < 0 || place == m_from)
        return -1;
    const bool toGroup = m_rows[place].kind == Kind::group;
    const bool toSection = m_rows[place].kind == Kind::section && m_rows[place].id == platformsSection;
    switch (m_rows[m_from].kind) {
    case Kind::platform:
        return (toGroup || toSection) && sidebarParent(m_rows, m_from) != place ? place : -1;
    case Kind::group:
        return toGroup ? place : -1;
    default:
        return -1;
    }
}

void SidebarDrop::apply(PlatformGroupManager &groups) const {
    if (m_row < 0)
        return;
    const SidebarRow &moved = m_rows[m_from];
    const SidebarRow &place = m_rows[m_row];
    if (moved.kind == Kind::group) {
        const QList<PlatformGroup> &all = groups.groups();
        const auto at = std::find_if(all.cbegin(), all.cend(),
                                     [id = QUuid(place.id)](const PlatformGroup &group) { return group.id == id; });
        groups.moveGroup(QUuid(moved.id), at - all.cbegin());
    } else if (place.kind == Kind::group) {
        groups.addPlatform(moved.id, QUuid(place.id));
    } else {
        groups.removePlatformFromGroup(moved.id);
    }
}

} // namespace ludarium
