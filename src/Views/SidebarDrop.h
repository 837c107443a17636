#pragma once

#include "Views/SidebarRow.h"

namespace ludarium {

/// Something dragged over the rows of the sidebar: a platform goes into a group or out of all, a group takes the place
/// of another one, and nothing else can be dropped.
class SidebarDrop {
  public:
    /// `source` is the key of what is dragged, `target` the row below the mouse. The rows must outlive the drop.
    SidebarDrop(const QList<SidebarRow> &rows, const QString &source, int target);

    /// The row that it goes to: a group, or the section for no group; -1 when it may not be dropped there.
    int row() const { return m_row; }
    /// Nothing happens without a row. Throws SettingsError when the store cannot keep the change.
    void apply(PlatformGroupManager &groups) const;

  private:
    int rowFor(int target) const;

    const QList<SidebarRow> &m_rows;
    int m_from;
    int m_row;
};

} // namespace ludarium
