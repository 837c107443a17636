// How long the parser takes from files to ready records, beside a bare libxml2 walk of the same files on one thread.

#include "Services/Library/LaunchBoxParser.h"
#include "support/CollectionGenerator.h"
#include "support/XmlWalk.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>

using namespace ludarium;

namespace {

struct Figures {
    double wall = 0; ///< seconds
    double cpu = 0;  ///< seconds, user and system
    double peak = 0; ///< MB, over the whole process
    qint64 count = 0;
};

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double peakMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

/// One measurement in a process of its own, so that its peak is its own too.
int measureHere(const QString &what, const QString &collection) {
    QElapsedTimer timer;
    timer.start();
    qint64 count = 0;
    LaunchBoxParser::Games games;
    if (what == QLatin1String("walk"))
        count = walkGamesFiles(collection);
    else
        count = (games = LaunchBoxParser().parseGamesWithAdditionalApps(collection)).games.size();
    const double wall = double(timer.nsecsElapsed()) / 1e9;
    std::printf("%.4f %.4f %.1f %lld\n", wall, cpuSeconds(), peakMegabytes(), static_cast<long long>(count));
    return 0;
}

Figures measure(const QString &what, const QString &collection) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), what, collection});
    process.waitForFinished(-1);
    const QList<QByteArray> values = process.readAllStandardOutput().simplified().split(' ');
    if (process.exitCode() != 0 || values.size() != 4)
        qFatal("the measured process failed");
    return {values[0].toDouble(), values[1].toDouble(), values[2].toDouble(), values[3].toLongLong()};
}

double median(QList<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void printTable(const char *title, const CollectionGenerator::Shape &shape, int rounds) {
    const QTemporaryDir directory;
    CollectionGenerator(shape).write(directory.path());
    qint64 size = 0;
    for (const QFileInfo &file : QDir(directory.filePath(QStringLiteral("Data/Platforms"))).entryInfoList(QDir::Files))
        size += file.size();

    measure(QStringLiteral("walk"), directory.path()); // brings the files into memory
    QList<double> parseWall, parseCpu, parsePeak, walkWall, walkCpu, walkPeak, ratios;
    Figures parse, bare;
    for (int i = 0; i < rounds; ++i) {
        parse = measure(QStringLiteral("parse"), directory.path());
        bare = measure(QStringLiteral("walk"), directory.path());
        parseWall.append(parse.wall);
        parseCpu.append(parse.cpu);
        parsePeak.append(parse.peak);
        walkWall.append(bare.wall);
        walkCpu.append(bare.cpu);
        walkPeak.append(bare.peak);
        ratios.append(parse.wall / bare.wall);
    }
    std::printf("%s: %lld games, %.1f MB of XML, %lld elements, %d cores, medians of %d rounds\n", title,
                static_cast<long long>(parse.count), double(size) / 1'048'576, static_cast<long long>(bare.count),
                QThread::idealThreadCount(), rounds);
    std::printf("  %-36s %9s %9s %12s\n", "", "wall s", "CPU s", "peak RSS MB");
    std::printf("  %-36s %9.3f %9.3f %12.1f\n", "parse to records", median(parseWall), median(parseCpu),
                median(parsePeak));
    std::printf("  %-36s %9.3f %9.3f %12.1f\n", "bare libxml2 SAX walk, one thread", median(walkWall), median(walkCpu),
                median(walkPeak));
    std::printf("  %-36s %9.2f %9.2f\n\n", "ratio", median(ratios), median(parseCpu) / median(walkCpu));
    std::fflush(stdout);
}

} // namespace

/// bench-parse [games] [rounds]
int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("--measure"))
        return measureHere(arguments.value(2), arguments.value(3));

    CollectionGenerator::Shape shape;
    if (arguments.size() > 1)
        shape.games = arguments[1].toInt();
    const int rounds = arguments.size() > 2 ? std::max(1, arguments[2].toInt()) : 7;
    printTable("seven platforms of uneven size", shape, rounds);
    shape.singlePlatform = true;
    printTable("one platform file", shape, rounds);
    return 0;
}
