#include "Services/Emulators/PrerequisitesManager.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/ProcessRunner.h"
#include "Host/Workspace.h"
#include "Services/Emulators/Mt32Roms.h"
#include "Services/Emulators/ToolVersion.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

bool checkTool(const HostPaths &paths, const QString &name) {
    for (const QString &folder : {u"/opt/homebrew/bin/"_s, u"/usr/local/bin/"_s, u"/usr/bin/"_s})
        if (QFileInfo::exists(paths.resolve(folder + name)))
            return true;
    return !paths.which(name).isEmpty();
}

/// Every bash to ask, best first; the system's own is the last.
QStringList bashes(const HostPaths &paths) {
    QStringList candidates;
    for (const QString &path : {u"/opt/homebrew/bin/bash"_s, u"/usr/local/bin/bash"_s})
        candidates.append(paths.resolve(path));
    if (paths.layout() == HostLayout::Linux)
        candidates.append(paths.which(u"bash"_s));
    candidates.append(paths.resolve(u"/bin/bash"_s));
    candidates.removeIf([](const QString &path) { return path.isEmpty() || !QFileInfo::exists(path); });
    candidates.removeDuplicates();
    return candidates;
}

/// What the disk alone tells.
Prerequisites look(const HostPaths &paths) {
    Prerequisites found;
    found.packageManager = findPackageManager(paths);
    found.gsedInstalled =
        checkTool(paths, u"gsed"_s) || (paths.layout() == HostLayout::Linux && checkTool(paths, u"sed"_s));
    found.aria2Installed = checkTool(paths, u"aria2c"_s);
    found.wgetInstalled = checkTool(paths, u"wget"_s);
    found.python3Installed = checkTool(paths, u"python3"_s);
    found.unzipInstalled = checkTool(paths, u"unzip"_s);
    found.mt32RomsInstalled = checkMT32Roms(paths);
    if (found.mt32RomsInstalled)
        found.mt32RomPath = mt32RomFolder(paths);
    return found;
}

} // namespace

PrerequisitesManager::PrerequisitesManager(Host &host, QObject *parent) : QObject(parent), m_host(host) {}

QCoro::Task<> PrerequisitesManager::checkAll() {
    if (std::exchange(m_isChecking, true))
        co_return;
    Q_EMIT changed();
    const QPointer<PrerequisitesManager> self(this);
    const HostPaths paths = m_host.paths;
    auto search = [paths] { return std::pair(look(paths), bashes(paths)); };
    auto [found, candidates] = co_await runOnPool(search);
    for (const QString &bash : candidates) {
        if (!self)
            co_return;
        found.bashVersion = co_await bashVersionOf(bash);
        found.bashVersionOK = found.bashVersion.startsWith(u'5');
        if (found.bashVersionOK)
            break;
    }
    if (!self)
        co_return;
    m_found = found;
    m_isChecking = false;
    m_isChecked = true;
    Q_EMIT changed();
}

QCoro::Task<QString> PrerequisitesManager::bashVersionOf(QString program) {
    const QStringList arguments{u"--version"_s};
    const QString text = co_await toolOutput(m_host, program, arguments);
    co_return bashVersionIn(text);
}

QString PrerequisitesManager::mt32RomFolder() const {
    return ludarium::mt32RomFolder(m_host.paths);
}

QCoro::Task<> PrerequisitesManager::openMT32RomFolder() {
    const QPointer<PrerequisitesManager> self(this);
    const QString folder = mt32RomFolder();
    auto make = [folder] { return QDir().mkpath(folder); };
    if (!co_await runOnPool(make))
        Log::warning(u"⚠️ %1 could not be made"_s.arg(folder));
    if (self)
        m_host.workspace.reveal(folder);
}

} // namespace ludarium
