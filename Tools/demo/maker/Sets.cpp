#include "maker/Sets.h"

#include "maker/Cartridge.h"
#include "maker/Media.h"

namespace ludarium::demo {

namespace {

QByteArray fileContent(const QString &source, const QString &programs) {
    if (source.startsWith(QStringLiteral("text:")))
        return source.mid(5).toLatin1();
    return readFile(programs + u'/' + source + QStringLiteral(".com"));
}

QString windows(QString path) {
    return path.replace(u'/', u'\\');
}

// The configuration as the sets have it: paths relative to their folder `eXo`, Windows style.
QByteArray dosboxConfiguration(const DemoGame &game) {
    QByteArray text = "[sdl]\nfullscreen=true\nfullresolution=desktop\noutput=surface\n\n"
                      "[dosbox]\nmachine=svga_s3\nmemsize=16\n\n"
                      "[render]\naspect=true\nscaler=normal2x\n\n"
                      "[cpu]\ncore=auto\ncputype=auto\ncycles=fixed 20000\n\n"
                      "[sblaster]\nsbtype=sb16\n\n"
                      "[speaker]\npcspeaker=true\npcrate=44100\n\n"
                      "[autoexec]\n@echo off\n";
    const QByteArray folder = game.folder.toLatin1();
    text += "mount c .\\eXoDOS\\" + folder + "\n";
    if (!game.disc.isEmpty())
        text += "imgmount d .\\eXoDOS\\" + folder + "\\cd\\" + folder.toUpper() + ".ISO -t iso\n";
    text += "c:\n";
    for (const QString &line : game.run)
        text += line.toLatin1() + "\n";
    return text + "exit\n";
}

QByteArray batchScript() {
    return "@echo off\r\ncd ..\r\ncd ..\r\ncd ..\r\n"
           "if not exist \".\\emulators\\dosbox\\dosbox.exe\" echo No DOSBox in this collection: start the game from "
           "Ludarium.\r\n";
}

QByteArray shellScript(const DemoGame &game) {
    return "#!/usr/bin/env bash\n"
           "# Starts the game with the machine's own DOSBox, from the collection's folder eXo.\n"
           "cd \"$(dirname \"${BASH_SOURCE[0]}\")/../../..\" || exit 1\n"
           "exec dosbox -conf \"./eXoDOS/!dos/" +
           game.folder.toLatin1() + "/dosbox_linux.conf\" -noconsole\n";
}

// Linux has no "\" in paths.
QByteArray linuxConfiguration(const DemoGame &game) {
    QByteArray text = dosboxConfiguration(game);
    const QByteArray folder = game.folder.toLatin1();
    text.replace(".\\eXoDOS\\" + folder + "\\cd\\", "./eXoDOS/" + folder + "/cd/");
    text.replace(".\\eXoDOS\\" + folder, "./eXoDOS/" + folder);
    return text;
}

qint64 moment(const DemoGame &game) {
    return game.date.startOfDay(Qt::UTC).toSecsSinceEpoch();
}

Files gameFiles(const DemoGame &game, const QString &programs) {
    Files files;
    for (const auto &[path, source] : game.programs)
        files.append({game.folder + u'/' + path, fileContent(source, programs)});
    if (!game.disc.isEmpty()) {
        Files disc;
        for (const auto &[path, source] : game.disc)
            disc.append({path, fileContent(source, programs)});
        files.append({QStringLiteral("%1/cd/%2.ISO").arg(game.folder, game.folder.toUpper()),
                      discImage(game.folder.toUpper(), disc, game.year())});
    }
    if (game.isScummVM())
        files.append(
            {game.folder + QStringLiteral("/README.TXT"),
             QByteArray(
                 "This title of the demo collection exists in its catalogue only: there is no game to start.\r\n")});
    return files;
}

GamePaths addCartridge(const Tree &tree, const DemoGame &game) {
    const bool pocket = game.platform == QStringLiteral("Nintendo Game Boy");
    const QString path =
        QStringLiteral("Games/%1/%2.%3")
            .arg(game.platform, game.fileTitle(), pocket ? QStringLiteral("gb") : QStringLiteral("nes"));
    tree.add(path, pocket ? pocketCartridge(game.title) : homeCartridge(game.title));
    GamePaths paths;
    paths.application = windows(path);
    paths.rootFolder = QStringLiteral("Games\\") + game.platform;
    return paths;
}

} // namespace

GamePaths addGameFiles(const Tree &tree, const DemoGame &game, const QString &programs) {
    if (game.isCartridge())
        return addCartridge(tree, game);
    const QString set = game.isDos() ? QStringLiteral("eXo/eXoDOS") : QStringLiteral("eXo/eXoScummVM");
    const QString scripts =
        set + (game.isDos() ? QStringLiteral("/!dos/") : QStringLiteral("/!ScummVM/")) + game.folder;
    const QString scriptName = scripts + u'/' + game.fileTitleWithYear();

    if (game.state == QStringLiteral("installed")) {
        for (const auto &[path, content] : gameFiles(game, programs))
            tree.add(set + u'/' + path, content);
    } else if (game.state == QStringLiteral("archived")) {
        tree.add(set + u'/' + game.fileTitleWithYear() + QStringLiteral(".zip"),
                 zipArchive(gameFiles(game, programs), moment(game)));
    }

    tree.add(scriptName + QStringLiteral(".bat"), batchScript());
    GamePaths paths;
    paths.application = windows(scriptName + QStringLiteral(".bat"));
    paths.rootFolder = windows(scripts);
    if (game.isDos()) {
        tree.add(scripts + QStringLiteral("/dosbox.conf"), dosboxConfiguration(game));
        tree.add(scripts + QStringLiteral("/dosbox_linux.conf"), linuxConfiguration(game));
        tree.add(scriptName + QStringLiteral(".bsh"), shellScript(game));
        paths.configuration = windows(scripts + QStringLiteral("/dosbox.conf"));
    } else {
        paths.configuration = windows(scriptName + QStringLiteral(".bat"));
    }
    for (const auto &[name, text] : game.extras) {
        tree.add(scripts + QStringLiteral("/Extras/") + name, text.toUtf8());
        const QString bare = name.section(u'/', -1).section(u'.', 0, -2);
        paths.additional.append(
            {QStringLiteral("Extras: ") + bare, windows(scripts + QStringLiteral("/Extras/") + name)});
    }
    if (game.manual) {
        const QString path = QStringLiteral("Manuals/%1/%2.pdf").arg(game.platform, game.fileTitleWithYear());
        tree.add(path, manual(game));
        paths.manual = windows(path);
        paths.additional.prepend({QStringLiteral("Manual"), windows(path)});
    }
    if (game.tune) {
        const QString path = QStringLiteral("Music/%1/%2.wav").arg(game.platform, game.fileTitle());
        tree.add(path, tune(game.tune));
        paths.music = windows(path);
    }
    return paths;
}

} // namespace ludarium::demo
