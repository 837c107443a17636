#include "Services/Dos/DosSettings.h"

#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Dos/FolderView.h"

namespace ludarium {

namespace {

QStringList mt32Candidates(const HostPaths &paths) {
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
    const QString configuration = parentPath(paths.settingsFolder());
    const QString data = parentPath(paths.applicationSupport());
    folders << configuration + QStringLiteral("/dosbox-staging")
            << configuration + QStringLiteral("/dosbox-staging/mt32-roms") << configuration + QStringLiteral("/dosbox")
            << data + QStringLiteral("/dosbox-staging/mt32-roms");
    for (const char *folder : {"~/.var/app/io.github.dosbox-staging/config/dosbox-staging",
                               "~/.var/app/io.github.dosbox-staging/config/dosbox-staging/mt32-roms", "~/.dosbox",
                               "/usr/local/share/mt32-rom-data", "/usr/share/mt32-rom-data"})
        folders.append(paths.resolve(QString::fromLatin1(folder)));
    return folders;
}

} // namespace

DosSettings DosSettings::current(const Host &host) {
    DosSettings result;
    result.fullscreen = host.settings.value(Settings::launchFullscreen);
    result.crtEffects = !host.settings.value(Settings::disableCRTEffects);
    result.temporaryDirectory = host.paths.temporaryDirectory();
    result.temporaryFolder = childPath(result.temporaryDirectory, QStringLiteral("Ludarium"));
    result.discSwapKeys = host.paths.discSwapKeys();
    result.mt32Folders = mt32Candidates(host.paths);
    return result;
}

} // namespace ludarium
