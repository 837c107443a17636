// What the library costs from the start of the program to the toggle of a favourite, each figure beside a floor that
// the same run measures, and how the figures grow with the number of games.

#include "App/AppState.h"
#include "App/Composition.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Host/Workspace.h"
#include "LibraryChild.h"
#include "LibraryFigures.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LaunchBoxParser.h"
#include "Services/Library/LibraryBrowser.h"
#include "Services/Library/LibraryCache.h"
#include "support/CollectionGenerator.h"
#include "support/Measured.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

using namespace ludarium;

namespace {

void touch(const QString &file) {
    QFile made(file);
    if (!made.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(file));
}

/// A third of the games on the disk, every other one unpacked, and a folder of scripts for every game of DOS.
void writeDiskTree(const QString &collection) {
    const QDir root(collection + QStringLiteral("/eXo/eXoDOS"));
    const GameList games = LaunchBoxParser().parseGamesWithAdditionalApps(collection).games;
    qsizetype left = games.size() / 3;
    for (const GamePtr &game : games) {
        const QString folder = game->gameFolderName();
        if (folder.isEmpty() || game->platform != QLatin1StringView("MS-DOS"))
            continue;
        root.mkpath(QStringLiteral("!dos/") + folder);
        if (left-- <= 0)
            continue;
        if (left % 2 == 0) {
            root.mkpath(folder);
            touch(root.filePath(folder + QStringLiteral("/GAME.EXE")));
        } else {
            touch(root.filePath(QStringLiteral("%1 (%2).zip").arg(game->title).arg(game->releaseYear.value_or(1990))));
        }
    }
}

/// What somebody collects who uses the program for years.
void writeUserData(const QString &home, const CollectionGenerator &generator, int games) {
    Composition::Options options;
    options.home = home;
    Composition composition(std::move(options));
    SettingsStore &settings = composition.host().settings;
    const auto id = [&](int i) { return generator.gameId(int(qint64(i) * 7919 % games)); };
    QStringList favourites;
    QMap<QString, qint64> counts;
    QMap<QString, double> times;
    QMap<QString, QDateTime> dates;
    for (int i = 0; i < 500; ++i)
        favourites.append(id(i * 3));
    for (int i = 0; i < 2000; ++i) {
        counts.insert(id(i), i % 40);
        times.insert(id(i), i * 10.5);
        dates.insert(id(i), QDateTime::fromSecsSinceEpoch(1'600'000'000 + i * 3600, Qt::UTC));
    }
    settings.transaction([&] {
        settings.setValue(Settings::favoriteGames, favourites);
        settings.setValue(Settings::playCounts, counts);
        settings.setValue(Settings::playTimes, times);
        settings.setValue(Settings::lastPlayedDates, dates);
        for (int i = 0; i < 200; ++i)
            settings.setEntry(Settings::gameNotes, id(i * 5), QStringLiteral("Stuck behind the second door."));
        for (int i = 0; i < 300; ++i)
            settings.setEntry(Settings::gameRatings, id(i * 2), qint64(1 + i % 5));
    });
}

ProgramRun runChild(const QStringList &arguments) {
    return runProgram(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--child")} + arguments);
}

/// Two numbers that a child has printed.
Measured numbers(const ProgramRun &run) {
    const QList<QByteArray> values = run.output.simplified().split(' ');
    return {values.value(0).toDouble(), values.value(1).toDouble()};
}

/// The second start has to tell all that the first one told.
void requireEqualStarts(const QString &home, const QString &collection) {
    const QString cli = QCoreApplication::applicationDirPath() + QStringLiteral("/ludarium-cli");
    const QStringList list{QStringLiteral("--home"),       home,
                           QStringLiteral("--collection"), collection,
                           QStringLiteral("--json"),       QStringLiteral("games")};
    const QByteArray first = runProgram(cli, list).output;
    if (runProgram(cli, list).output != first)
        qFatal("the second start tells something else than the first");
    std::printf("\nThe second start tells the same %lld bytes as the first.\n", static_cast<long long>(first.size()));
}

QList<Figure> startFigures(const QString &home, const QString &collection, const QString &cache, int rounds,
                           int games) {
    const QString cli = QCoreApplication::applicationDirPath() + QStringLiteral("/ludarium-cli");
    // With --json nothing is told before the games are there.
    const QStringList list{QStringLiteral("--home"),       home,
                           QStringLiteral("--collection"), collection,
                           QStringLiteral("--json"),       QStringLiteral("load")};
    Measured start = Measured::worst();
    Measured read = Measured::worst();
    Measured load = Measured::worst();
    Measured walk = Measured::worst();
    for (int i = 0; i < rounds; ++i) {
        start = start.best(runProgram(cli, list).time);
        read = read.best(numbers(runChild({QStringLiteral("read-cache"), cache})));
    }
    for (int i = 0; i < rounds; ++i) {
        QFile::remove(cache);
        load = load.best(numbers(runChild({QStringLiteral("load"), home, collection})));
        walk = walk.best(numbers(runChild({QStringLiteral("walk"), collection})));
    }
    Measured fill = Measured::worst();
    for (int i = 0; i < rounds; ++i)
        fill = fill.best(numbers(runChild({QStringLiteral("fill"), collection})));
    const QString unit = QStringLiteral("ms");
    const QString reading = QStringLiteral("reading the cache file and one DOM parse of it, in a running program");
    const QString walking = QStringLiteral("libxml2 SAX walk of the games files on one thread");
    return {{QStringLiteral("cached start: process to games"), start.wall, unit, walking, walk.wall, 0.4, 0},
            {QStringLiteral("  processor time of the same"), start.cpu, unit, reading, read.cpu, 0, 0},
            {QStringLiteral("full load, no cache"), load.wall, unit, walking, walk.wall, games > 60'000 ? 1.5 : 1.3, 0},
            {QStringLiteral("  reading the playlist files"), fill.wall, unit, walking, walk.wall, 0, 0},
            {QStringLiteral("  filling the dynamic playlists"), fill.cpu, unit, walking, walk.wall, 0,
             games > 60'000 ? 100.0 : 20.0},
            {QStringLiteral("  processor time of the same"), load.cpu, unit, walking, walk.cpu, 0, 0}};
}

QList<Figure> memoryFigures(const QString &home, const QString &collection, const QString &cache) {
    const QString texts = QStringLiteral("bytes of the kept texts in the XML");
    const Measured cached = numbers(runChild({QStringLiteral("memory"), home, collection}));
    QFile::remove(cache);
    const Measured full = numbers(runChild({QStringLiteral("memory"), home, collection}));
    return {
        {QStringLiteral("memory after a cached start"), cached.wall, QStringLiteral("MB"), texts, cached.cpu, 2.5, 0},
        {QStringLiteral("memory after a full load"), full.wall, QStringLiteral("MB"), texts, full.cpu, 2.5, 0}};
}

QList<Figure> measureAll(int games, int rounds) {
    const QTemporaryDir folder;
    const QString home = folder.filePath(QStringLiteral("home"));
    const QString collection = folder.filePath(QStringLiteral("collection"));
    CollectionGenerator::Shape shape;
    shape.games = games;
    const CollectionGenerator generator(shape);
    generator.write(collection);
    writeDiskTree(collection);
    requireEqualStarts(folder.filePath(QStringLiteral("other home")), collection);
    writeUserData(home, generator, games);
    runChild({QStringLiteral("load"), home, collection}); // brings the files into memory and leaves a cache

    Composition::Options options;
    options.home = home;
    Composition composition(std::move(options));
    const QString cache = LibraryCache(composition.host().paths).cacheFile();
    QList<Figure> figures = startFigures(home, collection, cache, rounds, games);
    GameLibrary &library = composition.appState().gameLibrary();
    LibraryBrowser &browser = composition.appState().browser();
    QCoro::waitFor(library.loadCollection(collection));
    settle(library);
    if (library.games().size() != games)
        qFatal("the library has %lld games", static_cast<long long>(library.games().size()));
    figures += searchFigures(library, browser);
    figures += statusFigures(library);
    figures += countFigures(library, browser);
    figures += downloadIndexFigures();
    figures += favouriteFigures(library, folder.path());
    figures += browsedChangeFigures(library, browser);
    figures += memoryFigures(home, collection, cache);
    printFigures(QStringLiteral("%1 games, %2 MB of cache; best of %3 rounds for whole programs")
                     .arg(games)
                     .arg(QFile(cache).size() / 1'048'576)
                     .arg(rounds),
                 figures);
    return figures;
}

} // namespace

/// bench-library [games]... ; LUDARIUM_BENCH_ROUNDS sets how often whole programs are run.
int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("--child"))
        return runLibraryChild(arguments.value(2), arguments.mid(3));

    QList<int> sizes;
    for (const QString &argument : arguments.mid(1))
        sizes.append(std::max(argument.toInt(), 1000));
    if (sizes.isEmpty())
        sizes.append(30'000);
    const int rounds = qEnvironmentVariableIntValue("LUDARIUM_BENCH_ROUNDS");
    QList<Figure> first;
    for (const int size : sizes) {
        const QList<Figure> figures = measureAll(size, rounds > 0 ? rounds : 15);
        if (first.isEmpty())
            first = figures;
        else
            printGrowth(sizes.first(), first, size, figures);
    }
    return 0;
}
