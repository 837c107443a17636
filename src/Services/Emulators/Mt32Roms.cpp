#include "Services/Emulators/Mt32Roms.h"

#include "Host/AppLogger.h"
#include "Host/HostPaths.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

bool hasRoms(const QString &folder) {
    bool control = false;
    bool pcm = false;
    for (const QString &name : {u"MT32_CONTROL.ROM"_s, u"MT32_PCM.ROM"_s, u"mt32_control.rom"_s, u"mt32_pcm.rom"_s,
                                u"CM32L_CONTROL.ROM"_s, u"CM32L_PCM.ROM"_s}) {
        if (!QFileInfo(folder + u'/' + name).isFile())
            continue;
        control = control || name.contains("control"_L1, Qt::CaseInsensitive);
        pcm = pcm || name.contains("pcm"_L1, Qt::CaseInsensitive);
    }
    return control && pcm;
}

QString parentOf(const QString &path) {
    return QFileInfo(path).path();
}

} // namespace

QStringList mt32RomFolders(const HostPaths &paths) {
    QStringList folders;
    if (paths.layout() == HostLayout::MacOS) {
        for (const char *folder :
             {"~/Library/Application Support/DOSBox Staging/mt32-roms", "~/Library/Preferences/DOSBox",
              "~/.config/dosbox-staging", "~/.config/dosbox-staging/mt32-roms", "~/.config/dosbox",
              "~/Library/Application Support/DOSBox", "/usr/local/share/mt32-rom-data",
              "/opt/homebrew/share/mt32-rom-data"})
            folders.append(paths.resolve(QString::fromLatin1(folder)));
        return folders;
    }
    // The program's own folders lie in the user's configuration and data folders, wherever those are.
    const QString configuration = parentOf(paths.settingsFolder());
    const QString data = parentOf(paths.applicationSupport());
    folders << configuration + u"/dosbox-staging"_s << configuration + u"/dosbox-staging/mt32-roms"_s
            << configuration + u"/dosbox"_s << data + u"/dosbox-staging/mt32-roms"_s;
    for (const char *folder : {"~/.var/app/io.github.dosbox-staging/config/dosbox-staging",
                               "~/.var/app/io.github.dosbox-staging/config/dosbox-staging/mt32-roms", "~/.dosbox",
                               "/usr/local/share/mt32-rom-data", "/usr/share/mt32-rom-data"})
        folders.append(paths.resolve(QString::fromLatin1(folder)));
    return folders;
}

QString mt32RomFolder(const HostPaths &paths) {
    if (paths.layout() == HostLayout::MacOS)
        return paths.resolve(u"~/Library/Application Support/DOSBox Staging/mt32-roms"_s);
    return parentOf(paths.applicationSupport()) + u"/dosbox-staging/mt32-roms"_s;
}

bool checkMT32Roms(const HostPaths &paths) {
    const QString own = mt32RomFolder(paths);
    if (!QFileInfo::exists(own) && !QDir().mkpath(own))
        Log::warning(u"⚠️ %1 could not be made"_s.arg(own));
    const QStringList folders = paths.layout() == HostLayout::MacOS ? QStringList{own} : mt32RomFolders(paths);
    return std::any_of(folders.cbegin(), folders.cend(), hasRoms);
}

} // namespace ludarium
