// The window on a big collection, without a display and with the software renderer: what a start, a scroll, a search
// and a change of the view cost, and for how long they keep the main thread from its events.

#include "Services/Library/LaunchBoxParser.h"
#include "WindowChild.h"
#include "support/CollectionGenerator.h"
#include "support/FigureTable.h"
#include "support/Measured.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>

using namespace ludarium;

namespace {

constexpr int games = 30'000;
constexpr int pictures = 10'000;
constexpr int differentPictures = 40;

/// A box of the usual size of scans on the web, with enough detail to take as long to decode as a photograph.
QByteArray drawnBox(int number) {
    QImage image(600, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, 600, 800);
    ground.setColorAt(0, QColor::fromHsv(number * 9 % 360, 180, 200));
    ground.setColorAt(1, QColor::fromHsv(number * 31 % 360, 200, 60));
    painter.fillRect(image.rect(), ground);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 900; ++i) {
        painter.setBrush(QColor::fromHsv((number * 17 + i * 7) % 360, 150, 220, 90));
        painter.drawEllipse(QPoint((i * 7919 + number * 131) % 600, (i * 104'729 + number * 37) % 800), 4 + i % 40,
                            4 + i % 23);
    }
    painter.end();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 85);
    return buffer.data();
}

/// Pictures for every third game, under the names that scrapers give them.
void writePictures(const QString &collection) {
    QList<QByteArray> boxes;
    for (int i = 0; i < differentPictures; ++i)
        boxes.append(drawnBox(i));
    const GameList list = LaunchBoxParser().parseGamesWithAdditionalApps(collection).games;
    int written = 0;
    for (qsizetype i = 0; i < list.size() && written < pictures; i += list.size() / pictures) {
        const QString folder = collection + QStringLiteral("/Images/%1/Box - Front").arg(list[i]->platform);
        QDir().mkpath(folder);
        QString name = list[i]->title;
        for (QChar &c : name)
            if (QStringLiteral(":'/\\?%*|\"<>").contains(c))
                c = u'_';
        QFile file(folder + QStringLiteral("/%1-01.jpg").arg(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(boxes[written % differentPictures]) < 0)
            qFatal("%s cannot be written", qPrintable(file.fileName()));
        ++written;
    }
}

QStringList childArguments(const QStringList &arguments) {
    return QStringList{QStringLiteral("--child")} + arguments;
}

ProgramRun runChild(const QStringList &arguments) {
    return runProgram(QCoreApplication::applicationFilePath(), childArguments(arguments));
}

/// What a child printed: a number for each name.
QHash<QByteArray, double> figuresOf(const QByteArray &output) {
    QHash<QByteArray, double> figures;
    for (const QByteArray &line : output.split('\n'))
        if (const QList<QByteArray> pair = line.split(' '); pair.size() == 2)
            figures.insert(pair[0], pair[1].toDouble());
    return figures;
}

/// Calls that name a file, made by the main thread between the child's two marks.
struct FileCalls {
    int count = 0;
    QByteArray examples;
};
std::optional<FileCalls> fileCallsWhileScrolling(const QString &home, const QString &collection) {
    if (QStandardPaths::findExecutable(QStringLiteral("strace")).isEmpty())
        return std::nullopt;
    const QTemporaryDir folder;
    const QString trace = folder.filePath(QStringLiteral("trace"));
    QProcess strace;
    strace.setStandardOutputFile(QProcess::nullDevice());
    strace.start(QStringLiteral("strace"),
                 QStringList{QStringLiteral("-f"), QStringLiteral("--seccomp-bpf"), QStringLiteral("-e"),
                             QStringLiteral("trace=%file,getdents64"), QStringLiteral("-o"), trace,
                             QCoreApplication::applicationFilePath()} +
                     childArguments({QStringLiteral("trace"), home, collection}));
    if (!strace.waitForFinished(180'000) || strace.exitCode() != 0)
        qFatal("strace failed");
    QFile file(trace);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no trace");
    FileCalls calls;
    QByteArray mainThread;
    bool counting = false;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QByteArray thread = line.left(line.indexOf(' '));
        if (mainThread.isEmpty())
            mainThread = thread;
        if (line.contains("/bench-window-begins"))
            counting = true;
        else if (line.contains("/bench-window-ends"))
            counting = false;
        else if (counting && thread == mainThread && !line.contains("resumed>") && calls.count++ < 10)
            calls.examples += line + '\n';
    }
    return calls;
}

QList<Figure> startFigures(const QString &home, const QString &collection, int rounds) {
    const QString unit = QStringLiteral("ms");
    double empty = 1e9, start = 1e9, splash = 1e9;
    for (int i = 0; i < rounds; ++i) {
        empty = std::min(empty, runChild({QStringLiteral("empty")}).time.wall);
        const ProgramRun run = runChild({QStringLiteral("start"), home, collection});
        start = std::min(start, run.time.wall);
        splash = std::min(splash, run.time.wall + figuresOf(run.output).value("splash"));
    }
    return {{QStringLiteral("cached start: first frame with games"), start, unit,
             QStringLiteral("a program that shows an empty window"), empty, 0, 0},
            {QStringLiteral("the same: until the splash has gone"), splash, unit, {}, 0, 0, 0}};
}

QList<Figure> useFigures(const QString &home, const QString &collection) {
    const QHash<QByteArray, double> figures = figuresOf(runChild({QStringLiteral("use"), home, collection}).output);
    const QString ms = QStringLiteral("ms");
    const auto line = [&](const QByteArray &what, const QByteArray &key, double wanted = 0,
                          const QByteArray &floor = {}) {
        return Figure{QString::fromUtf8(what),
                      figures.value(key),
                      ms,
                      floor.isEmpty() ? QString() : QStringLiteral("the median of the same"),
                      floor.isEmpty() ? 0.0 : figures.value(floor),
                      0,
                      wanted};
    };
    std::printf("\nThe whole grid in %.1f s, %.0f steps and %.0f frames\n", figures.value("whole.seconds"),
                figures.value("whole.steps"), figures.value("whole.frames"));
    QList<Figure> list;
    for (const auto &[what, key] : {std::pair{"slow scroll", "slow"},
                                    {"whole grid, 0.9 pages a frame", "whole"},
                                    {"scroll bar pulled to the end, 7 pages a frame", "pulled"}}) {
        const QByteArray name(what);
        const QByteArray prefix(key);
        list += {line(name + ": main thread blocked, longest", prefix + ".all.longest", 16, prefix + ".all.median"),
                 line("  99th percentile", prefix + ".all.p99", 16),
                 line("  longest without drawing", prefix + ".other.longest", 16),
                 line("  99th percentile without drawing", prefix + ".other.p99", 16),
                 line("  longest drawing (software)", prefix + ".draw.longest", 0, prefix + ".draw.median")};
    }
    list += {line("search: key to new content, without debounce, longest", "search.longest", 50),
             line("  mean", "search.mean", 50), line("view mode: grid to list", "view.list", 0),
             line("view mode: list to grid", "view.grid", 0)};
    for (const auto &[what, key, wanted] : {std::tuple{"memory after a start", "memory.before", 0.0},
                                            {"memory after scrolling all", "memory.after", 400.0}})
        list.append({QString::fromUtf8(what), figures.value(key), QStringLiteral("MB"), {}, 0, 0, wanted});
    return list;
}

} // namespace

/// bench-window [FOLDER]: where the collection and the home are kept for the next run; LUDARIUM_BENCH_ROUNDS sets how
/// often the program is started.
int main(int argc, char **argv) {
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0)
        return runWindowChild(argc, argv);
    QCoreApplication application(argc, argv);
    const QTemporaryDir temporary;
    const QString folder = application.arguments().value(1, temporary.path());
    const QString home = folder + QStringLiteral("/home");
    const QString collection = folder + QStringLiteral("/collection");
    if (!QFile::exists(collection)) {
        CollectionGenerator::Shape shape;
        shape.games = games;
        CollectionGenerator(shape).write(collection);
        writePictures(collection);
    }
    runChild({QStringLiteral("prepare"), home, collection});
    const int rounds = qEnvironmentVariableIntValue("LUDARIUM_BENCH_ROUNDS");
    QList<Figure> figures = startFigures(home, collection, rounds > 0 ? rounds : 5);
    figures += useFigures(home, collection);
    printFigures(QStringLiteral("%1 games, %2 pictures, software renderer, 1280x800").arg(games).arg(pictures),
                 figures);
    if (const std::optional<FileCalls> calls = fileCallsWhileScrolling(home, collection))
        std::printf("\nFile-system calls of the main thread while scrolling: %d (wanted: 0)\n%s", calls->count,
                    calls->examples.constData());
    else
        std::printf("\nstrace is not installed: file-system calls were not counted\n");
    return 0;
}
