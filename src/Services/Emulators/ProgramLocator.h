#pragma once

#include "Services/Emulators/ProgramTables.h"

#include <QMap>
#include <QString>
#include <optional>

namespace ludarium {

class HostPaths;
class SettingsStore;

/// Looks through the program tables on the disk. The user's settings are read once, in the constructor, on the main
/// thread; the lookups themselves may run on any thread.
class ProgramLocator {
  public:
    ProgramLocator(const HostPaths &paths, const SettingsStore &settings);

    /// The user's setting, then the candidates in order. Queries of Spotlight are left out: they need a child process
    /// and come after everything else, see `spotlightQueries`.
    std::optional<QString> find(LocatedProgram program) const;

    /// The row's queries in order; none on Linux.
    QList<ProgramCandidate> spotlightQueries(LocatedProgram program) const;
    /// The program that the output of `mdfind` leads to.
    static std::optional<QString> fromSpotlight(const ProgramCandidate &query, const QByteArray &output);

  private:
    std::optional<QString> look(const ProgramCandidate &candidate) const;
    std::optional<QString> newestAppImage(const QString &pattern) const;

    const HostPaths &m_paths;
    QMap<LocatedProgram, QString> m_userPaths;
    QString m_collection;
};

} // namespace ludarium
