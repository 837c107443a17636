#pragma once

#include "Models/EmulatorRequirement.h"

#include <QHash>
#include <QList>
#include <vector>

namespace ludarium {

/// Counts of a requirement database. `total` counts titles, the others count lines.
struct RequirementStats {
    qsizetype total = 0;
    qsizetype staging = 0;
    qsizetype dosboxX = 0;
    qsizetype ece = 0;
    qsizetype vanilla = 0;
    qsizetype custom = 0;
    bool operator==(const RequirementStats &) const = default;
};

/// The kind of a DOSBox build by its name, such as "ECE4481".
EmulatorType classifyDOSBoxVersion(const QString &build);

/// The content of one eXo/util/dosbox.txt, never changed once made. One game a line, "{title}:{build}\{file}"; the last
/// ":" separates. Of lines with one title the last one stands.
class RequirementTable {
  public:
    RequirementTable() = default;
    static RequirementTable parse(const QString &text);

    /// The entry of a title: as written, in another case, without what a title adds to tell its edition, with its
    /// article behind, or the first that begins with it. Between several that fit, the order of the file decides.
    /// Takes no walk over the table: a load asks for every game of a collection.
    const EmulatorRequirement *find(const QString &title) const;

    const QList<EmulatorRequirement> &entries() const { return m_entries; } ///< in the order of the file
    const RequirementStats &stats() const { return m_stats; }

  private:
    const EmulatorRequirement *exact(const QString &title) const;
    const EmulatorRequirement *ignoringCase(const QString &lower) const;
    const EmulatorRequirement *beginningWith(const QString &lower) const;

    QList<EmulatorRequirement> m_entries;
    RequirementStats m_stats;
    QHash<QString, qsizetype> m_exact;
    QHash<QString, qsizetype> m_lower; ///< the first of each
    /// Lower-case titles, sorted, and beside them the places of their entries.
    std::vector<QString> m_sorted;
    std::vector<qsizetype> m_sortedPlaces;
};

} // namespace ludarium
