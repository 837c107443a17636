#pragma once

#include "Services/Library/GameFamily.h"
#include "Services/Library/NameTable.h"

#include <QStringList>
#include <array>

namespace ludarium {

/// The spelling of a name with its article at the other end: "Foo, The" for "The Foo" and the reverse; none, one or
/// two of them.
QStringList normalizeArticleVariants(const QString &name);

/// The names of installed games and of archives in a collection, in the form of `assignNameKey`, from one listing a
/// directory. File sizes are asked for only in a lite collection and only of archives, so the cost is that of listing,
/// on a network drive too.
class CollectionScan {
  public:
    static CollectionScan scanCollectionDirectories(const QString &collection, bool isLiteCollection);

    /// Installed games and archives of a family. An archive stands under its own name (`NameTable::archive`) and under
    /// its name without year, with either place of the article (`NameTable::archiveTitle`). Windows 9x has installed
    /// games only, as "{name}" and as "{year}/{name}".
    const NameTable &names(GameFamily family) const { return m_names[static_cast<size_t>(family)]; }

  private:
    std::array<NameTable, gameFamilyCount> m_names;
};

} // namespace ludarium
