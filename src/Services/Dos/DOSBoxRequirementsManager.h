#pragma once

#include "Services/Dos/RequirementTable.h"

#include <QMutex>
#include <memory>

namespace ludarium {

/// The DOSBox builds that a collection was tested with, from its eXo/util/dosbox.txt. May be used from any thread; a
/// load replaces the whole table at once.
class DOSBoxRequirementsManager {
  public:
    DOSBoxRequirementsManager();

    /// Reads the file, for the thread pool. When there is none, or it cannot be read, what is known stays.
    void loadDatabase(const QString &collection);
    std::optional<EmulatorRequirement> getRequirement(const QString &title) const;
    static EmulatorType classifyVersion(const QString &build) { return classifyDOSBoxVersion(build); }

    std::shared_ptr<const RequirementTable> requirements() const;
    /// The file that was read last; null when none was.
    QString databasePath() const;

  private:
    mutable QMutex m_mutex; ///< guards what follows
    std::shared_ptr<const RequirementTable> m_table;
    QString m_databasePath;
};

} // namespace ludarium
