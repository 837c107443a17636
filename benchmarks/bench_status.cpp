// What the status check of a library costs, beside listing the folders that it lists; and the look-up of titles in a
// download index.

#include "Models/Game.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/InstallationStatus.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <dirent.h>
#include <functional>

using namespace ludarium;

namespace {

constexpr int gameCount = 30'000;
constexpr int archiveCount = 5'000;
constexpr int folderCount = 5'000;
constexpr int indexCount = 15'000;
constexpr int titleCount = 10'000;
constexpr int rounds = 25;

double milliseconds(const std::function<void()> &action) {
    double best = 1e9;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        action();
        best = std::min(best, double(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

/// Titles as collections have them: articles, numerals, subtitles, punctuation.
QString title(int i) {
    static const char *const words[]{"Secret", "Island", "Quest", "Wing", "Doom",  "Star",   "Manager", "Legend",
                                     "Castle", "Space",  "Race",  "King", "Magic", "Hawaii", "Dungeon", "Planet"};
    const auto word = [&](int at) { return QString::fromLatin1(words[(i / at + i * at) % 16]); };
    switch (i % 5) {
    case 0:
        return QStringLiteral("The %1 of %2 %3").arg(word(1), word(3)).arg(i);
    case 1:
        return QStringLiteral("%1 %2 II: The %3, Part %4").arg(word(1), word(5), word(7)).arg(i);
    case 2:
        return QStringLiteral("%1 & %2 %3").arg(word(2), word(3)).arg(i);
    case 3:
        return QStringLiteral("%1%2").arg(word(1)).arg(i);
    default:
        return QStringLiteral("%1's %2 %3 in Space!").arg(word(1), word(2)).arg(i);
    }
}

GameList makeGames() {
    GameList games;
    for (int i = 0; i < gameCount; ++i) {
        Game game;
        game.id = QString::number(i);
        game.title = title(i);
        game.searchTitle = game.title.toLower().toUtf8();
        game.platform = QStringLiteral("MS-DOS");
        game.releaseYear = 1980 + i % 20;
        game.configurationPath = QStringLiteral("eXo\\eXoDOS\\!dos\\game%1\\dosbox.conf").arg(i);
        games.append(std::make_shared<const Game>(std::move(game)));
    }
    return games;
}

void touch(const QString &path, qint64 size = 0) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
        std::abort();
}

QString archiveName(const Game &game) {
    QString name = game.title;
    return name.replace(QStringLiteral(": "), QStringLiteral(" - ")) + QStringLiteral(" (%1)").arg(*game.releaseYear);
}

qsizetype listing(const QByteArray &path) {
    qsizetype count = 0;
    DIR *stream = ::opendir(path.constData());
    while (stream != nullptr && ::readdir(stream) != nullptr)
        ++count;
    if (stream != nullptr)
        ::closedir(stream);
    return count;
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString collection = folder.path();
    const QString dos = collection + QStringLiteral("/eXo/eXoDOS");
    const QString aria = collection + QStringLiteral("/eXo/util/aria");
    QDir().mkpath(dos);
    QDir().mkpath(aria);
    const GameList games = makeGames();
    for (int i = 0; i < folderCount; ++i)
        QDir(dos).mkdir(QStringLiteral("game%1").arg(i));
    for (int i = folderCount; i < folderCount + archiveCount; ++i)
        touch(dos + u'/' + archiveName(*games[i]) + QStringLiteral(".zip"), 20'000);

    const double floor = milliseconds([&] { listing(QFile::encodeName(dos)); });
    const auto downloads = std::make_shared<AriaIndexManager>();
    const InstallationStatus status(downloads);
    qsizetype found = 0;
    const auto count = [&](bool GameStatus::*flag) {
        found = 0;
        for (const GameStatus &one : status.check(games, collection))
            found += one.*flag;
    };
    const double full = milliseconds([&] { count(&GameStatus::isCompressed); });
    std::printf("%-64s %8.2f ms\n", "floor: list a folder of 10,000 entries", floor);
    std::printf("%-64s %8.2f ms  (%.1f times the floor; %lld compressed)\n",
                "status of 30,000 games beside 5,000 folders, 5,000 archives", full, full / floor, (long long)(found));

    QByteArray index;
    for (int i = 0; i < indexCount; ++i)
        index += QByteArray::number(i + 1) + ":2MiB (2,097,152):./eXo/eXoDOS/" +
                 archiveName(*games[i + 12'000]).toUtf8() + ".zip\n";
    QFile file(aria + QStringLiteral("/eXoDOS_index.txt"));
    if (!file.open(QIODevice::WriteOnly) || file.write(index) != index.size())
        return 1;
    file.close();
    std::printf("%-64s %8.2f ms\n", "load an index of 15,000 entries",
                milliseconds([&] { downloads->loadIndex(collection); }));
    const auto titles = [&](int first) {
        const auto current = downloads->index();
        found = 0;
        for (int i = first; i < first + titleCount; ++i)
            found += current->getDownloadInfoByTitle(games[i]->title, true) != nullptr;
    };
    double time = milliseconds([&] { titles(12'000); });
    std::printf("%-64s %8.2f ms  (%lld found)\n", "look up 10,000 titles that are there", time, (long long)(found));
    time = milliseconds([&] { titles(0); });
    std::printf("%-64s %8.2f ms  (%lld found)\n", "look up 10,000 titles that are not", time, (long long)(found));
    time = milliseconds([&] { count(&GameStatus::isDownloadable); });
    std::printf("%-64s %8.2f ms  (%lld downloadable)\n", "status of the 30,000 games as a lite collection", time,
                (long long)(found));
    return 0;
}
