#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>
#include <optional>

namespace ludarium {

struct Host;
class HostPaths;

/// The sandbox of a program that came as a Flatpak or a snap. It has a "/tmp" of its own and sees a part of the disk.
struct ProgramSandbox {
    enum class Kind { flatpak, snap };
    Kind kind = Kind::flatpak;
    QString id; ///< "io.github.dosbox-staging", "dosbox-x"

    /// A folder that the program reads under the same path as everybody else, whatever it may see besides.
    QString sharedFolder(const HostPaths &paths) const;
    bool operator==(const ProgramSandbox &) const = default;
};

/// None for a program that runs like any other. Links to a sandboxed program count as it.
std::optional<ProgramSandbox> sandboxOf(const HostPaths &paths, const QString &program);

/// Whether the sandbox's own tool, by what it printed, lets the program see `folder`.
bool sandboxSees(const ProgramSandbox &sandbox, const QByteArray &permissions, const QString &folder,
                 const QString &home);

/// Asks the sandbox's tool. Says why the program cannot see the folder and how that is changed; empty when it can, and
/// when the tool does not answer.
QCoro::Task<QString> whySandboxDoesNotSee(Host *host, ProgramSandbox sandbox, QString folder);

} // namespace ludarium
