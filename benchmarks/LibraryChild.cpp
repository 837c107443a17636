#include "LibraryChild.h"

#include "App/AppState.h"
#include "App/Composition.h"
#include "Host/Dialogs.h"
#include "Host/Workspace.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LaunchBoxParser.h"
#include "Services/Library/PlaylistRules.h"
#include "support/Measured.h"
#include "support/XmlWalk.h"

#include <QCoreApplication>
#include <QFile>
#include <QThreadPool>
#include <QUtf8StringView>
#include <cstdio>
#include <malloc.h>
#include <simdjson.h>
#include <unistd.h>

namespace ludarium {

namespace {

void print(const Measured &time) {
    std::printf("%.3f %.3f\n", time.wall, time.cpu);
}

Measured readCache(const QString &name) {
    return measured([&] {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("there is no cache file");
        QByteArray bytes(file.size() + qsizetype(simdjson::SIMDJSON_PADDING), Qt::Uninitialized);
        const qint64 size = file.read(bytes.data(), file.size());
        simdjson::dom::parser parser;
        simdjson::dom::element root;
        if (parser.parse(bytes.constData(), size_t(size), false).get(root) != simdjson::SUCCESS)
            qFatal("the cache file is no JSON");
    });
}

/// Up to the status that says all is ready; what goes on in the background afterwards is not counted.
Measured load(GameLibrary &library, const QString &collection) {
    return measured([&] {
        QObject context;
        bool ready = false;
        QObject::connect(&library, &GameLibrary::loadingChanged, &context,
                         [&] { ready = ready || library.loadingProgress() == 1.0; });
        const QCoro::Task<> loading = library.loadCollection(collection);
        while (!ready) {
            if (!library.errorMessage().isEmpty())
                qFatal("%s", qPrintable(library.errorMessage()));
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    });
}

qint64 residentBytes() {
    ::malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no /proc");
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

/// Bytes that the kept texts of a game take in the XML.
qint64 textBytes(const Game &game) {
    qint64 bytes = game.notes.size() + game.overview.size();
    for (const QString *text : {&game.id,          &game.title,      &game.sortTitle,       &game.platform,
                                &game.developer,   &game.publisher,  &game.genre,           &game.series,
                                &game.playMode,    &game.rating,     &game.applicationPath, &game.configurationPath,
                                &game.commandLine, &game.rootFolder, &game.manualPath,      &game.musicPath,
                                &game.videoPath,   &game.source,     &game.databaseID,      &game.wikipediaURL,
                                &game.videoURL})
        bytes += text->toUtf8().size();
    for (const AdditionalApplication &application : game.additionalApplications)
        for (const QString *text :
             {&application.id, &application.gameId, &application.name, &application.applicationPath})
            bytes += text->toUtf8().size();
    return bytes;
}

} // namespace

void settle(const GameLibrary &library) {
    while (library.isLoading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (int i = 0; i < 3; ++i) {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
}

int runLibraryChild(const QString &mode, const QStringList &arguments) {
    if (mode == QLatin1String("read-cache")) {
        print(readCache(arguments.value(0)));
        return 0;
    }
    if (mode == QLatin1String("walk")) {
        print(measured([&] { walkGamesFiles(arguments.value(0)); }));
        return 0;
    }
    if (mode == QLatin1String("fill")) {
        const GameList games = LaunchBoxParser().parseGamesWithAdditionalApps(arguments.value(0)).games;
        QList<Playlist> playlists;
        const Measured reading = measured([&] { playlists = LaunchBoxParser().parsePlaylists(arguments.value(0)); });
        const Measured filling = measured([&] { playlists = applyPlaylistFilters(playlists, games); });
        std::printf("%.3f %.3f\n", reading.wall, filling.wall);
        return 0;
    }
    Composition::Options options;
    options.home = arguments.value(0);
    Composition composition(std::move(options));
    GameLibrary &library = composition.appState().gameLibrary();
    if (mode == QLatin1String("load")) {
        print(load(library, arguments.value(1)));
        settle(library);
        return 0;
    }
    if (mode != QLatin1String("memory"))
        return 2;
    const qint64 before = residentBytes();
    load(library, arguments.value(1));
    settle(library);
    library.index();
    const qint64 after = residentBytes();
    qint64 texts = 0;
    for (const GamePtr &game : library.games())
        texts += textBytes(*game);
    std::printf("%.1f %.1f\n", double(after - before) / 1'048'576, double(texts) / 1'048'576);
    return 0;
}

} // namespace ludarium
