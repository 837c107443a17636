#include "Services/Emulators/ProgramSandbox.h"

#include "Host/AppLogger.h"
#include "Host/Host.h"
#include "Host/HostPaths.h"
#include "Host/SafeFiles.h"
#include "Services/Emulators/ToolVersion.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

constexpr int longestChainOfLinks = 8;

bool isBelow(const QString &path, const QString &folder) {
    return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

/// The folders of which a Flatpak has its own even when it may see the whole machine.
bool isOwnOfEveryFlatpak(const QString &path) {
    static const QStringList names{u"/app"_s,  u"/bin"_s,   u"/boot"_s,  u"/dev"_s,  u"/efi"_s,  u"/etc"_s,
                                   u"/lib"_s,  u"/lib32"_s, u"/lib64"_s, u"/proc"_s, u"/root"_s, u"/run"_s,
                                   u"/sbin"_s, u"/sys"_s,   u"/tmp"_s,   u"/usr"_s,  u"/var"_s};
    return !isBelow(path, u"/run/media"_s) &&
           std::any_of(names.cbegin(), names.cend(), [&](const QString &name) { return isBelow(path, name); });
}

/// Whether a folder lies in what one entry of a Flatpak's "filesystems" names.
bool flatpakEntryHolds(const QString &entry, const QString &folder, const QString &home) {
    if (entry == "host"_L1)
        return isBelow(folder, home) || !isOwnOfEveryFlatpak(folder);
    if (entry == "home"_L1 || entry == "~"_L1)
        return isBelow(folder, home);
    if (entry.startsWith("~/"_L1))
        return isBelow(folder, home + entry.mid(1));
    return entry.startsWith(u'/') && isBelow(folder, QDir::cleanPath(entry));
}

bool flatpakSees(const QByteArray &permissions, const QString &folder, const QString &home) {
    bool sees = false;
    for (const QByteArray &line : permissions.split('\n')) {
        if (!line.startsWith("filesystems="))
            continue;
        for (QString entry : QString::fromUtf8(line.mid(12)).split(u';', Qt::SkipEmptyParts)) {
            for (const QLatin1StringView mode : {":ro"_L1, ":rw"_L1, ":create"_L1})
                if (entry.endsWith(mode))
                    entry.chop(mode.size());
            if (!entry.startsWith(u'!'))
                sees = sees || flatpakEntryHolds(entry.trimmed(), folder, home);
        }
    }
    return sees;
}

/// Whether a snap's plug has a slot in the table that "snap connections" prints.
bool isPlugged(const QByteArray &connections, const QByteArray &interface) {
    for (const QByteArray &line : connections.split('\n')) {
        const QByteArrayList columns = line.simplified().split(' ');
        if (columns.value(0) == interface)
            return columns.value(2, "-") != "-";
    }
    return false;
}

bool isRemovable(const QString &folder) {
    return isBelow(folder, u"/media"_s) || isBelow(folder, u"/mnt"_s) || isBelow(folder, u"/run/media"_s);
}

bool snapSees(const QByteArray &connections, const QString &folder, const QString &home) {
    if (isRemovable(folder))
        return isPlugged(connections, "removable-media");
    // Hidden files and folders of the home are not shared.
    return isBelow(folder, home) && !folder.mid(home.size() + 1).startsWith(u'.') && isPlugged(connections, "home");
}

} // namespace

QString ProgramSandbox::sharedFolder(const HostPaths &paths) const {
    return kind == Kind::flatpak ? paths.resolve(u"~/.var/app/"_s + id + u"/cache"_s)
                                 : paths.resolve(u"~/snap/"_s + id + u"/common"_s);
}

std::optional<ProgramSandbox> sandboxOf(const HostPaths &paths, const QString &program) {
    if (paths.layout() != HostLayout::Linux)
        return std::nullopt;
    QString path = QDir::cleanPath(program);
    for (int hop = 0; hop < longestChainOfLinks && !path.isEmpty(); ++hop) {
        const QString name = path.section(u'/', -1);
        const QString folder = path.section(u'/', 0, -2);
        for (const QString &exports : {u"/var/lib/flatpak/exports/bin"_s, u"~/.local/share/flatpak/exports/bin"_s})
            if (folder == paths.resolve(exports))
                return ProgramSandbox{ProgramSandbox::Kind::flatpak, name};
        for (const QString &snaps : {u"/snap/bin"_s, u"/var/lib/snapd/snap/bin"_s})
            if (folder == paths.resolve(snaps))
                return ProgramSandbox{ProgramSandbox::Kind::snap, name.section(u'.', 0, 0)};
        path = QFileInfo(path).symLinkTarget();
    }
    return std::nullopt;
}

bool sandboxSees(const ProgramSandbox &sandbox, const QByteArray &permissions, const QString &folder,
                 const QString &home) {
    return sandbox.kind == ProgramSandbox::Kind::flatpak ? flatpakSees(permissions, folder, home)
                                                         : snapSees(permissions, folder, home);
}

QCoro::Task<QString> whySandboxDoesNotSee(Host *host, ProgramSandbox sandbox, QString folder) {
    const bool isFlatpak = sandbox.kind == ProgramSandbox::Kind::flatpak;
    const QString tool = host->paths.which(isFlatpak ? u"flatpak"_s : u"snap"_s);
    const QStringList question = isFlatpak ? QStringList{u"info"_s, u"--show-permissions"_s, sandbox.id}
                                           : QStringList{u"connections"_s, sandbox.id};
    QString answer;
    if (!tool.isEmpty())
        answer = co_await toolOutput(*host, tool, question);
    if (!answer.contains(isFlatpak ? u"[Context]"_s : sandbox.id + u':')) {
        Log::warning(u"⚠️ What %1 may see is not known: %2"_s.arg(sandbox.id, answer.trimmed()));
        co_return QString();
    }
    const QByteArray permissions = answer.toUtf8();
    const QString real = QFileInfo(folder).canonicalFilePath();
    const QString home = host->paths.home();
    if (sandboxSees(sandbox, permissions, folder, home) &&
        (real.isEmpty() || sandboxSees(sandbox, permissions, real, home)))
        co_return QString();
    const QString shown = real.isEmpty() ? folder : real;
    if (isFlatpak)
        co_return u"%1 is a Flatpak that does not see %2. Let it see the folder with:\n  flatpak override --user "
                  "--filesystem=\"%3\" %1"_s.arg(sandbox.id, shown, shellQuotedText(shown));
    if (isRemovable(shown))
        co_return u"%1 is a snap that does not see %2. Let it see such folders with:\n  sudo snap connect "
                  "%1:removable-media"_s.arg(sandbox.id, shown);
    co_return u"%1 is a snap that does not see %2. A snap sees folders in your home folder that are not hidden, when "
              "this was done:\n  sudo snap connect %1:home"_s.arg(sandbox.id, shown);
}

} // namespace ludarium
