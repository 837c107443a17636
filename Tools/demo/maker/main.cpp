// Makes the demo collection while Ludarium is built: draws the pictures, packs the games, writes the XML. The programs
// embed the resulting tree. Same sources, same fonts: same bytes.

#include "maker/Artwork.h"
#include "maker/LaunchBoxXml.h"
#include "maker/Sets.h"

#include <QDir>
#include <QDirIterator>
#include <QGuiApplication>
#include <QSaveFile>
#include <cstdio>

using namespace ludarium::demo;

namespace {

struct Sources {
    QString folder;   ///< games.json, playlists.json, captures/
    QString programs; ///< assembled .com files
};

// Images carry "-01" behind the title; a few lie in a region folder or bear no number, as in grown collections.
void addArt(const Tree &tree, const DemoGame &game, const Sources &sources) {
    const auto add = [&](const QString &type, int number, const QString &extension, const QByteArray &bytes) {
        const QString region = game.title.contains(QStringLiteral("Brumes")) ? QStringLiteral("France/") : QString();
        tree.add(QStringLiteral("Images/%1/%2/%3%4-%5.%6")
                     .arg(game.platform, type, region, game.imageTitle())
                     .arg(number, 2, 10, QLatin1Char('0'))
                     .arg(extension),
                 bytes);
    };
    const auto wants = [&game](const char *kind) { return game.art.contains(QLatin1StringView(kind)); };
    QList<QImage> shots;
    for (const QString &name : game.captures) {
        QImage capture;
        if (!capture.loadFromData(
                readFile(sources.folder + QStringLiteral("/captures/") + name + QStringLiteral(".png"))))
            throw std::runtime_error(qPrintable(QStringLiteral("not a picture: ") + name));
        shots.append(capture.width() < 640
                         ? capture.scaled(capture.size() * 2, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                         : capture);
    }
    int number = 1;
    for (const QImage &shot : shots)
        add(QStringLiteral("Screenshot - Gameplay"), number++, QStringLiteral("png"), png(shot));
    if (wants("shot")) {
        const QImage title = screenshot(game, 0);
        add(QStringLiteral("Screenshot - Game Title"), 1, QStringLiteral("png"), png(title));
        shots.append(screenshot(game, 1));
        add(QStringLiteral("Screenshot - Gameplay"), number++, QStringLiteral("png"), png(shots.last()));
    }
    const QImage front = wants("box") ? boxFront(game) : QImage();
    if (wants("box"))
        add(QStringLiteral("Box - Front"), 1, QStringLiteral("jpg"), jpeg(front, 82));
    if (wants("back") && !shots.isEmpty())
        add(QStringLiteral("Box - Back"), 1, QStringLiteral("jpg"),
            jpeg(boxBack(game, shots.value(1, shots.first())), 80));
    if (wants("box3d"))
        add(QStringLiteral("Box - 3D"), 1, QStringLiteral("png"),
            png(boxStanding(front, game).scaled(288, 360, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    if (wants("logo"))
        add(QStringLiteral("Clear Logo"), 1, QStringLiteral("png"), png(clearLogo(game)));
    if (wants("fanart"))
        add(QStringLiteral("Fanart - Background"), 1, QStringLiteral("jpg"), jpeg(fanart(game), 76));
    if (wants("cart"))
        add(QStringLiteral("Cart - Front"), 1, QStringLiteral("png"), png(cartridge(game)));
    if (wants("disc"))
        add(QStringLiteral("Disc"), 1, QStringLiteral("png"), png(compactDisc(game)));
}

// What DOSBox build each game was made with; all start with any.
QByteArray dosboxList(const QList<DemoGame> &games) {
    QByteArray text;
    for (const DemoGame &game : games)
        if (game.isDos())
            text += game.title.toUtf8() + ":staging0.81.0\\dosbox.exe\r\n";
    return text;
}

void make(const Sources &sources, const QString &target) {
    const Tree tree(target);
    const QList<DemoGame> games = readGames(sources.folder + QStringLiteral("/games.json"));
    QStringList platforms;
    for (const DemoGame &game : games)
        if (!platforms.contains(game.platform))
            platforms.append(game.platform);
    tree.add(QStringLiteral("Data/Platforms.xml"), platformsXml(platforms));
    for (const QString &platform : platforms) {
        QList<DemoGame> own;
        QList<GamePaths> paths;
        for (const DemoGame &game : games) {
            if (game.platform != platform)
                continue;
            own.append(game);
            paths.append(addGameFiles(tree, game, sources.programs));
            addArt(tree, game, sources);
        }
        tree.add(QStringLiteral("Data/Platforms/%1.xml").arg(platform), gamesXml(own, paths));
    }
    for (const DemoPlaylist &playlist : readPlaylists(sources.folder + QStringLiteral("/playlists.json")))
        tree.add(QStringLiteral("Data/Playlists/%1.xml").arg(playlist.name), playlistXml(playlist, games));
    tree.add(QStringLiteral("eXo/util/dosbox.txt"), dosboxList(games));
    tree.add(QStringLiteral("README.txt"),
             "This is Ludarium's demo collection. All games, pictures, tunes and texts in it were made for it;\n"
             "none of the titles or companies exists outside it.\n");
}

// The resource description of everything in the tree.
void describe(const QString &tree, const QString &file) {
    QStringList paths;
    QDirIterator it(tree, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        paths.append(QDir(tree).relativeFilePath(it.next()));
    paths.sort();
    QByteArray text = "<RCC><qresource prefix=\"/ludarium-demo\">\n";
    for (const QString &path : paths)
        text += "<file alias=\"" + path.toHtmlEscaped().toUtf8() + "\">" +
                (tree + u'/' + path).toHtmlEscaped().toUtf8() + "</file>\n";
    text += "</qresource></RCC>\n";
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly) || output.write(text) != text.size() || !output.commit())
        throw std::runtime_error(qPrintable(file + QStringLiteral(": ") + output.errorString()));
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 6) {
        std::fputs("usage: ludarium-demo-maker SOURCES PROGRAMS FONTS TREE QRC\n", stderr);
        return 2;
    }
    try {
        loadTypefaces(arguments[3]);
        QDir(arguments[4]).removeRecursively();
        make({arguments[1], arguments[2]}, arguments[4]);
        describe(arguments[4], arguments[5]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "ludarium-demo-maker: %s\n", error.what());
        return 1;
    }
    return 0;
}
