#pragma once

#include <QString>
#include <QStringList>

namespace ludarium {

struct Host;

/// What of the machine and the settings goes into DOSBox configurations, read once a launch on the main thread.
struct DosSettings {
    bool fullscreen = true;
    bool crtEffects = true;
    QString temporaryFolder;    ///< {temporaryDirectory}/Ludarium, for generated configurations
    QString temporaryDirectory; ///< for configurations adapted once
    QString discSwapKeys;
    QStringList mt32Folders; ///< where MT-32 ROMs are looked for when the collection has none, best first

    static DosSettings current(const Host &host);
};

} // namespace ludarium
