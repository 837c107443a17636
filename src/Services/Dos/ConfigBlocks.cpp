#include "Services/Dos/ConfigBlocks.h"

#include "Services/Dos/DosConfigText.h"

namespace ludarium {

QString collectionMt32Folder(const QString &collection) {
    return childPath(collection, QStringLiteral("eXo/emulators/dosbox/mt32"));
}

void ConfigBlocks::addDisplay(const DosSettings &settings) {
    add({"[sdl]", settings.fullscreen ? "fullscreen = true" : "fullscreen = false", "fullresolution = desktop",
         "windowresolution = 1280x960", "output = opengl"});
}

void ConfigBlocks::addRender(const DosSettings &settings) {
    QByteArrayList lines{"[render]", "integer_scaling = off"};
    if (settings.crtEffects)
        lines.append("glshader = crt-lottes");
    add(lines);
}

void ConfigBlocks::addMonochrome(const std::optional<GameVersionOption> &version) {
    if (version && version->versionType == VersionType::hercules)
        add({"[mono_display]", "monochrome_palette = white"});
}

void ConfigBlocks::addSoundFont(const QString &collection, FolderView &view) {
    const QString font = childPath(collectionMt32Folder(collection), QStringLiteral("SoundCanvas.sf2"));
    if (view.exists(font))
        add({"[fluidsynth]", "soundfont = " + hostPathText(font)});
}

void ConfigBlocks::addMt32Roms(const QString &folder) {
    add({"[mt32]", "romdir = " + hostPathText(folder)});
}

} // namespace ludarium
