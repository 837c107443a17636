#include "Services/Dos/MinimalConfig.h"

#include "Host/AppLogger.h"
#include "Services/Dos/ConfigBlocks.h"
#include "Services/Dos/DiscImages.h"
#include "Services/Dos/DosConfigText.h"

#include <QFile>
#include <algorithm>

namespace ludarium {

namespace {

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ');
}

QByteArray machineOf(const std::optional<GameVersionOption> &version) {
    switch (version ? version->versionType : VersionType::other) {
    case VersionType::cga:
        return "cga";
    case VersionType::hercules:
        return "hercules";
    case VersionType::ega:
        return "ega";
    default:
        return "svga_s3";
    }
}

void addAudio(ConfigBlocks &blocks, AudioType audio) {
    switch (audio) {
    case AudioType::tandy:
        return blocks.add({"[speaker]", "tandy = on"});
    case AudioType::gameBlaster:
        return blocks.add({"[sblaster]", "sbtype = gb"});
    case AudioType::pcSpeaker:
        return blocks.add({"[sblaster]", "sbtype = none"});
    case AudioType::adlib:
        return blocks.add({"[sblaster]", "sbtype = none", "oplmode = opl2"});
    default:
        return;
    }
}

/// First image of the folder "cd" of a folder, null when there is none.
QString imageIn(FolderView &view, const QString &folder) {
    for (const QString &name : view.names(folder))
        if (name.compare(QStringLiteral("cd"), Qt::CaseInsensitive) == 0 && view.isDirectory(childPath(folder, name))) {
            const QStringList images = findAllCDImages(view, childPath(folder, name));
            return images.isEmpty() ? QString() : images.constFirst();
        }
    return {};
}

QString cdImage(FolderView &view, const QString &gameFolder, const QString &workingDirectory,
                const QString &collection) {
    if (const QString image = imageIn(view, gameFolder); !image.isNull())
        return image;
    const QString version = view.resolve(gameFolder, workingDirectory.section(u'/', 0, 0));
    if (!version.isNull())
        if (const QString image = imageIn(view, version); !image.isNull())
            return image;
    // Among all games, one that is called "CD" is a game and no folder of discs.
    const QString parent = parentPath(gameFolder);
    return parent == childPath(collection, QStringLiteral("eXo/eXoDOS")) ? QString() : imageIn(view, parent);
}

QString namedProgram(FolderView &view, const QString &folder, const QStringList &names) {
    for (const QString &name : names)
        if (const QString found = view.find(folder, name); !found.isNull())
            return found;
    return {};
}

QString anyProgram(FolderView &view, const QString &folder) {
    static const QStringList tools =
        words("setup install config setsound setmuse setblast imuse uvconfig bootmkr patch");
    for (const QString &name : view.names(folder)) {
        const QString lower = name.toLower();
        if (!lower.endsWith(QStringLiteral(".exe")) && !lower.endsWith(QStringLiteral(".bat")))
            continue;
        if (std::none_of(tools.cbegin(), tools.cend(), [&](const QString &tool) { return lower.startsWith(tool); }))
            return name;
    }
    return {};
}

/// The lines that start a folder's program; none when it has none.
QByteArrayList startLines(FolderView &view, const QString &folder) {
    static const QStringList usual = words("main.exe run.bat sierra.exe sierra.com monkey.exe monkey.com game.exe "
                                           "start.exe run.exe go.exe play.exe start.bat");
    static const QStringList usualBelow = words("main.exe run.bat start.bat game.exe play.exe");
    QString program = namedProgram(view, folder, usual);
    if (program.isNull())
        program = anyProgram(view, folder);
    if (!program.isNull())
        return {QFile::encodeName(program)};
    for (const QString &subfolder : view.names(folder)) {
        const QString path = childPath(folder, subfolder);
        if (subfolder.compare(QStringLiteral("cd"), Qt::CaseInsensitive) == 0 || !view.isDirectory(path))
            continue;
        program = namedProgram(view, path, usualBelow);
        if (program.isNull())
            program = anyProgram(view, path);
        if (!program.isNull())
            return {"cd " + QFile::encodeName(subfolder), QFile::encodeName(program)};
    }
    return {};
}

} // namespace

QByteArray createMinimalDOSBoxConfig(const DosSettings &settings, const QString &gameFolder,
                                     const std::optional<GameVersionOption> &version, const QString &collection,
                                     FolderView &view) {
    const QString working = version ? version->workingDirectory : QString();
    ConfigBlocks blocks;
    blocks.addDisplay(settings);
    blocks.addRender(settings);
    blocks.add({"[dosbox]", "machine = " + machineOf(version)});
    blocks.addMonochrome(version);
    blocks.add({"[cpu]", "cycles = auto"});
    blocks.add({"[mixer]", "rate = 48000"});
    blocks.add(
        {"[midi]", version && version->audioType == AudioType::mt32 ? "mididevice = mt32" : "mididevice = default"});
    blocks.addSoundFont(collection, view);
    if (const QString roms = collectionMt32Folder(collection); view.exists(roms))
        blocks.addMt32Roms(roms);
    if (version && version->audioType)
        addAudio(blocks, *version->audioType);

    QByteArrayList lines{"[autoexec]", "@echo off", "mount c " + quotedHostPath(parentPath(gameFolder))};
    if (const QString image = cdImage(view, gameFolder, working, collection); !image.isNull())
        lines.append("imgmount d " + quotedHostPath(image) + " -t cdrom");
    lines.append("c:");
    const QString what = QStringLiteral("A command of the launch configuration");
    if (!working.isEmpty())
        lines.append(checkedText("cd " + working.toUtf8(), what));
    if (version && !version->executable.isEmpty()) {
        lines.append(checkedText(version->executable.toUtf8(), what));
    } else {
        QByteArrayList start;
        if (const QString folder = view.resolve(gameFolder, working); !folder.isNull())
            start = startLines(view, folder);
        if (start.isEmpty()) {
            start = startLines(view, gameFolder);
            if (!start.isEmpty() && !working.isEmpty())
                start.prepend("cd \\");
        }
        if (start.isEmpty())
            Log::warning(QStringLiteral("⚠️ No executable found in %1 - game may not start automatically")
                             .arg(lastPathComponent(gameFolder)));
        lines += start;
    }
    lines.append("exit");
    return blocks.text() + lines.join('\n') + '\n';
}

} // namespace ludarium
