// How fast the pictures of a collection are copied to the local disk, beside vipsthumbnail, the fastest program for
// that purpose that distributions package, on the same files at the same size and quality.

#include "App/AppState.h"
#include "App/Composition.h"
#include "Host/Imaging/ImageCodec.h"
#include "Host/ShareOut.h"
#include "Services/Artwork/ImageLoader.h"
#include "support/FigureTable.h"
#include "support/Measured.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

using namespace ludarium;

namespace {

constexpr int pictureCount = 400;
constexpr int rounds = 3;

/// A picture with the detail of a printed box: soft areas, hard edges, fine grain.
Bitmap box(int number, int width, int height) {
    QRandomGenerator random(quint32(number) + 1);
    Bitmap image = Bitmap::uninitialized(width, height);
    std::vector<uchar> grain(4096);
    for (uchar &value : grain)
        value = uchar(random.bounded(24));
    const double fx = 3 + random.bounded(9);
    const double fy = 3 + random.bounded(9);
    const int stripe = 20 + int(random.bounded(60));
    std::vector<int> waveX(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x)
        waveX[size_t(x)] = int(60 * std::sin(fx * x / width));
    size_t at = random.bounded(4096);
    for (int y = 0; y < height; ++y) {
        const int waveY = int(60 * std::sin(fy * y / height));
        uchar *pixel = image.row(y);
        for (int x = 0; x < width; ++x, pixel += 4) {
            const int base = 110 + waveX[size_t(x)] + waveY;
            const bool edge = ((x + y) / stripe + x / (stripe * 2)) % 5 == 0;
            for (int c = 0; c < 3; ++c) {
                at = (at * 5 + 1) & 4095;
                pixel[c] = uchar(std::clamp(base + (edge ? 50 - 40 * c : 15 * c) + grain[at] - 12, 0, 255));
            }
            pixel[3] = 255;
        }
    }
    return image;
}

GameList makeCollection(const QString &collection) {
    const QString folder = collection + QStringLiteral("/Images/MS-DOS/Box - Front");
    QDir().mkpath(folder);
    GameList games;
    for (int i = 0; i < pictureCount; ++i) {
        Game game;
        game.id = QString::number(i);
        game.title = QStringLiteral("Box Number %1").arg(i, 4, 10, QLatin1Char('0'));
        game.platform = QStringLiteral("MS-DOS");
        games.append(std::make_shared<const Game>(std::move(game)));
    }
    shareOut(size_t(pictureCount), [&](size_t i) {
        QRandomGenerator random(quint32(i) + 77);
        const int width = 600 + int(random.bounded(601));
        const int height = width * 4 / 3;
        QFile file(QStringLiteral("%1/%2-01.jpg").arg(folder, games[qsizetype(i)]->title));
        const QByteArray data = encodeJpeg(box(int(i), width, height), 88);
        if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
            qFatal("no room for the pictures");
    });
    return games;
}

double cpuSeconds(int who) {
    rusage usage{};
    ::getrusage(who, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

/// What this process, or its children, took since it was made.
class Stopwatch {
  public:
    explicit Stopwatch(int who) : m_who(who), m_cpu(cpuSeconds(who)) { m_timer.start(); }
    Measured read() const { return {double(m_timer.nsecsElapsed()) / 1e6, (cpuSeconds(m_who) - m_cpu) * 1e3}; }

  private:
    int m_who;
    double m_cpu;
    QElapsedTimer m_timer;
};

Measured ours(const GameList &games, const QString &collection) {
    const QTemporaryDir home;
    Composition::Options options;
    options.home = home.path();
    Composition composition(std::move(options));
    ImageLoader &images = composition.appState().imageLoader();
    QEventLoop loop;
    Measured time;
    PreCacheCount count;
    const auto run = [&]() -> QCoro::Task<> {
        const Stopwatch watch(RUSAGE_SELF);
        count = co_await images.preCacheAllThumbnails(games, collection);
        time = watch.read();
        loop.quit();
    };
    const QCoro::Task<> running = run();
    loop.exec();
    if (count.cached != games.size())
        qFatal("only %d of %d pictures were made", count.cached, int(games.size()));
    return time;
}

/// What as many vipsthumbnail processes as `processes` take together, each with its share of the files; with as many
/// threads each as they choose where `threads` is 0.
Measured theirs(const QString &program, const QStringList &files, int processes, int threads) {
    const QTemporaryDir output;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (threads > 0)
        environment.insert(QStringLiteral("VIPS_CONCURRENCY"), QString::number(threads));
    std::vector<std::unique_ptr<QProcess>> children;
    const auto start = [&](const QStringList &share) {
        auto child = std::make_unique<QProcess>();
        child->setProcessEnvironment(environment);
        child->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child->start(program, QStringList{QStringLiteral("--size"), QStringLiteral("600x600>"), QStringLiteral("-o"),
                                          output.path() + QStringLiteral("/%s.jpg[Q=80,strip]")} +
                                  share);
        children.push_back(std::move(child));
    };
    const Stopwatch watch(RUSAGE_CHILDREN);
    for (int i = 0; i < processes; ++i) {
        QStringList share;
        for (qsizetype at = i; at < files.size(); at += processes)
            share.append(files[at]);
        start(share);
    }
    for (const auto &child : children)
        if (!child->waitForFinished(-1) || child->exitCode() != 0)
            qFatal("vipsthumbnail failed");
    const Measured time = watch.read();
    const qsizetype made = QDir(output.path()).entryList(QDir::Files).size();
    if (files.size() > 1 && made != files.size())
        qFatal("vipsthumbnail made only %lld of %lld", (long long)(made), (long long)(files.size()));
    return time;
}

void addFigures(QList<Figure> &figures, const Measured &own, const Measured &other, const QString &name) {
    const auto add = [&](const char *what, double value, double floor) {
        figures.append({QStringLiteral("%1 thumbnails%2").arg(pictureCount).arg(QLatin1StringView(what)), value,
                        QStringLiteral("ms"), name, floor, 1, 0});
    };
    add("", own.wall, other.wall);
    add(", CPU time", own.cpu, other.cpu);
}

void printRate(const QString &who, const Measured &time) {
    std::printf("%-60s %6.0f images/s\n", qUtf8Printable(who), pictureCount / time.wall * 1e3);
}

/// A way to use the other program.
struct Use {
    QString name;
    int processes = 1;
    int threads = 0; ///< in each process; 0 leaves the number to it
    Measured time = Measured::worst();
};

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    std::printf("Making %d pictures of 600 x 800 to 1200 x 1600 in %s ...\n", pictureCount,
                qUtf8Printable(folder.path()));
    std::fflush(stdout);
    const GameList games = makeCollection(folder.path());
    const QDir pictures(folder.path() + QStringLiteral("/Images/MS-DOS/Box - Front"));
    QStringList files;
    double bytes = 0;
    for (const QFileInfo &file : pictures.entryInfoList(QDir::Files)) {
        files.append(file.filePath());
        bytes += double(file.size());
    }
    const QString program = QStandardPaths::findExecutable(QStringLiteral("vipsthumbnail"));
    const int cores = QThread::idealThreadCount();
    // As many as our pre-cache has: with fewer, a busy machine would give vipsthumbnail a smaller share of itself.
    const int threads = std::clamp(2 * cores, 2, 8);

    Measured own = Measured::worst();
    Measured startOnly = Measured::worst();
    Use uses[]{{QStringLiteral("vipsthumbnail, one call for all files"), 1, 0},
               {QStringLiteral("vipsthumbnail, a process a core, of one thread"), cores, 1},
               {QStringLiteral("vipsthumbnail, %1 processes of one thread").arg(threads), threads, 1}};
    Measured floor = Measured::worst();
    // In turns, so that whoever else works on the machine disturbs all alike.
    for (int i = 0; i < rounds; ++i) {
        const Stopwatch watch(RUSAGE_SELF);
        for (const QString &path : std::as_const(files)) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly) || file.readAll().isEmpty())
                return 1;
        }
        floor = floor.best(watch.read());
        own = own.best(ours(games, folder.path()));
        if (program.isEmpty())
            continue;
        startOnly = startOnly.best(theirs(program, files.first(1), 1, 0));
        for (Use &use : uses)
            use.time = use.time.best(theirs(program, files, use.processes, use.threads));
    }
    std::printf("\n%d pictures, %.0f kB on average, to at most 600 x 600 at quality 80, on %d cores with %d threads; "
                "best of %d rounds\n",
                pictureCount, bytes / pictureCount / 1000, cores, threads, rounds);
    printRate(QStringLiteral("our pre-cache, one process, %1 threads").arg(threads), own);
    QList<Figure> figures;
    if (program.isEmpty()) {
        std::printf("vipsthumbnail is not installed (package libvips-tools)\n");
    } else {
        // Its start is measured with one picture, which takes next to nothing of it.
        for (Use &use : uses) {
            use.time = {use.time.wall - startOnly.wall, use.time.cpu - startOnly.cpu};
            printRate(use.name, use.time);
            addFigures(figures, own, use.time, use.name);
        }
        std::printf("Taken off vipsthumbnail for its start: %.0f ms\n", startOnly.wall);
    }
    figures.append({QStringLiteral("%1 thumbnails beside the disk").arg(pictureCount), own.wall, QStringLiteral("ms"),
                    QStringLiteral("reading the files"), floor.wall, 0, 0});
    printFigures(QStringLiteral("Copying covers to the local disk"), figures);
    return 0;
}
