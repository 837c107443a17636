#include "Services/Dos/DosSettings.h"

#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Dos/FolderView.h"
#include "Services/Emulators/Mt32Roms.h"

namespace ludarium {

DosSettings DosSettings::current(const Host &host) {
    DosSettings result;
    result.fullscreen = host.settings.value(Settings::launchFullscreen);
    result.crtEffects = !host.settings.value(Settings::disableCRTEffects);
    result.temporaryDirectory = host.paths.temporaryDirectory();
    result.temporaryFolder = childPath(result.temporaryDirectory, QStringLiteral("Ludarium"));
    result.discSwapKeys = host.paths.discSwapKeys();
    result.mt32Folders = mt32RomFolders(host.paths);
    return result;
}

} // namespace ludarium
