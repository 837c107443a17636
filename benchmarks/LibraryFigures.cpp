#include "LibraryFigures.h"

#include "Services/Collections/AriaIndex.h"
#include "Services/Collections/AriaIndexManager.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/InstallationStatus.h"
#include "Services/Library/LibraryBrowser.h"
#include "support/Measured.h"

#include <QFile>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>
#include <unordered_map>

namespace ludarium {

namespace {

/// Keeps the compiler from leaving out what nobody reads.
template<typename Value>
void use(const Value &value) {
    asm volatile("" : : "g"(&value) : "memory");
}

/// The three letters that the titles of most games have.
QByteArray commonLetters(const GameList &games) {
    std::unordered_map<std::string, int> counts;
    for (const GamePtr &game : games)
        for (qsizetype i = 0; i + 3 <= game->searchTitle.size(); ++i)
            if (std::isalpha(static_cast<unsigned char>(game->searchTitle[i])) &&
                std::isalpha(static_cast<unsigned char>(game->searchTitle[i + 1])) &&
                std::isalpha(static_cast<unsigned char>(game->searchTitle[i + 2])))
                ++counts[game->searchTitle.sliced(i, 3).toStdString()];
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto &a, const auto &b) { return a.second < b.second; });
    return most == counts.end() ? QByteArray("the") : QByteArray::fromStdString(most->first);
}

QByteArray searchedText(const GameList &games) {
    QByteArray all;
    for (const GamePtr &game : games)
        for (const QByteArray *text : {&game->searchTitle, &game->searchSortTitle, &game->searchDeveloper,
                                       &game->searchPublisher, &game->searchGenre, &game->searchSeries})
            all.append(*text).append('\0');
    return all;
}

double median(QList<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

double medianOf(int rounds, const auto &action) {
    QList<double> times;
    for (int i = 0; i < rounds; ++i)
        times.append(measured([&] { action(i); }).wall);
    return median(times);
}

} // namespace

QList<Figure> searchFigures(GameLibrary &library, LibraryBrowser &browser) {
    const QByteArray letters = commonLetters(library.games());
    const QByteArray text = searchedText(library.games());
    const LibraryIndex &index = library.index();

    Figure search{QStringLiteral("search of \"%1\" over six fields").arg(QString::fromUtf8(letters)),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("memmem over the same bytes"),
                  0,
                  4,
                  5};
    search.value = bestOf(30, [&] { use(index.search(letters)); }).cpu;
    search.floor = bestOf(30, [&] {
                       qsizetype hits = 0;
                       for (const char *at = text.constData(), *end = at + text.size(); at < end; ++at, ++hits) {
                           at = static_cast<const char *>(
                               ::memmem(at, size_t(end - at), letters.constData(), size_t(letters.size())));
                           if (!at)
                               break;
                       }
                       use(hits);
                   }).cpu;

    // What somebody types letter by letter, and the whole list again when it is deleted; the slowest counts.
    Figure browse{
        QStringLiteral("filter, sort and group after a changed search"), 0, QStringLiteral("ms"), {}, 0, 0, 16};
    for (const SortOrder order : {SortOrder::title, SortOrder::year, SortOrder::developer, SortOrder::rating,
                                  SortOrder::recentlyPlayed, SortOrder::playCount})
        for (qsizetype length = 0; length <= letters.size(); ++length) {
            BrowseQuery query;
            query.search = QString::fromUtf8(letters.first(length));
            query.sortOrder = order;
            BrowseQuery other;
            other.search = QStringLiteral("nothing has this");
            double best = Measured::worst().wall;
            for (int i = 0; i < 7; ++i) {
                browser.filteredGameGroups(other);
                best = std::min(best, measured([&] { use(browser.filteredGameGroups(query)); }).wall);
            }
            browse.value = std::max(browse.value, best);
        }
    return {search, browse};
}

QList<Figure> statusFigures(GameLibrary &library) {
    Figure figure{QStringLiteral("installation status of all games"),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("listing the directory of the games with opendir and readdir"),
                  0,
                  3,
                  0};
    const InstallationStatus status(std::make_shared<AriaIndexManager>());
    const QString collection = library.collectionURL();
    figure.value = bestOf(40, [&] {
                       use(status.check(library.games(), collection));
                   }).wall; // of both, since the check takes every core
    figure.floor = bestOf(40, [&] {
                       qsizetype letters = 0;
                       DIR *const folder =
                           ::opendir(QFile::encodeName(collection + QStringLiteral("/eXo/eXoDOS")).constData());
                       if (!folder)
                           qFatal("there is no folder of games");
                       while (const dirent *entry = ::readdir(folder))
                           letters += qsizetype(std::strlen(entry->d_name));
                       ::closedir(folder);
                       use(letters);
                   }).wall;
    return {figure};
}

QList<Figure> countFigures(GameLibrary &library, LibraryBrowser &browser) {
    Figure figure{QStringLiteral("all counts of the sidebar"),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("one pass over the games that sums four fields"),
                  0,
                  3,
                  0};
    double best = Measured::worst().cpu;
    for (int i = 0; i < 30; ++i) {
        Q_EMIT library.gamesChanged(); // what was counted no longer holds
        best = std::min(best, measured([&] { use(browser.counts()); }).cpu);
    }
    figure.value = best;
    figure.floor = bestOf(30, [&] {
                       qint64 sum = 0;
                       for (const GamePtr &game : library.games())
                           sum += game->playCount + game->isInstalled + int(game->gameProgress) + game->isFavorite;
                       use(sum);
                   }).cpu;
    return {figure};
}

QList<Figure> favouriteFigures(GameLibrary &library, const QString &folder) {
    constexpr int rounds = 300;
    Figure figure{QStringLiteral("one favourite toggled"),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("one page appended to a file and fdatasync"),
                  0,
                  0,
                  1};
    const int file =
        ::open(QFile::encodeName(folder + QStringLiteral("/floor")).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const QByteArray page(4096, 'x');
    figure.floor = medianOf(rounds, [&](int) {
        if (::write(file, page.constData(), size_t(page.size())) != page.size() || ::fdatasync(file) != 0)
            qFatal("the floor cannot be written");
    });
    ::close(file);
    const GameList &games = library.games();
    const GamePtr *const list = games.constData();
    QList<double> own;
    figure.value = medianOf(rounds, [&](int i) {
        const double before = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        library.toggleFavorite(games[i * 7 % games.size()]->id);
        own.append(milliseconds(CLOCK_PROCESS_CPUTIME_ID) - before);
    });
    if (games.constData() != list)
        qFatal("the list of games was copied");
    return {figure, {QStringLiteral("  processor time of the same"), median(own), figure.unit, {}, 0, 0, 1}};
}

QList<Figure> browsedChangeFigures(GameLibrary &library, LibraryBrowser &browser) {
    constexpr int rounds = 200;
    Figure figure{QStringLiteral("favourite toggled, groups and counts shown"),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("a copy of the list of groups"),
                  0,
                  0,
                  4};
    const BrowseQuery query;
    figure.floor = bestOf(30, [&] {
                       QList<GameGroup> copied = browser.filteredGameGroups(query);
                       copied.detach();
                       use(copied);
                   }).cpu;
    QList<double> times;
    // As a view that shows the groups holds them.
    QList<GameGroup> shown = browser.filteredGameGroups(query);
    browser.counts();
    for (int i = 0; i < rounds; ++i)
        times.append(measured([&] {
                         library.toggleFavorite(library.games()[i * 7 % library.games().size()]->id);
                         shown = browser.filteredGameGroups(query);
                         use(browser.counts());
                     }).cpu);
    figure.value = median(times);
    return {figure};
}

QList<Figure> downloadIndexFigures() {
    constexpr int archives = 15'000;
    constexpr int titles = 10'000;
    QString text;
    QStringList names;
    for (int i = 0; i < archives; ++i) {
        names.append(QStringLiteral("The Made-up Game of Part %1 (%2)").arg(i).arg(1980 + i % 25));
        text += QStringLiteral("%1:%2:eXoDOS/eXo/eXoDOS/%3.zip\n").arg(i + 1).arg(1000 + i).arg(names.last());
    }
    AriaIndex index;
    index.parseIndex(text, CollectionType::eXoDOS);
    if (index.entries().size() != archives)
        qFatal("the index was not read");
    // Two of three as the archive is called, one in the other ways that titles are written, or not there.
    QStringList wanted;
    for (int i = 0; i < titles; ++i)
        wanted.append(i % 3 > 0    ? names[i]
                      : i % 2 == 0 ? QStringLiteral("Made-up Game of Part %1, The").arg(i)
                                   : QStringLiteral("Unknown title %1: Again").arg(i));
    QHash<QString, int> table;
    for (int i = 0; i < archives; ++i)
        table.insert(names[i].toLower(), i);

    Figure figure{QStringLiteral("10,000 titles matched, fast, 15,000 archives"),
                  0,
                  QStringLiteral("ms"),
                  QStringLiteral("one look-up a lower-cased title in a hash table"),
                  0,
                  0,
                  60};
    figure.value = bestOf(10, [&] {
                       qsizetype found = 0;
                       for (const QString &title : wanted)
                           found += index.getDownloadInfoByTitle(title, true) != nullptr;
                       use(found);
                   }).cpu;
    figure.floor = bestOf(10, [&] {
                       qsizetype found = 0;
                       for (const QString &title : wanted)
                           found += table.contains(title.toLower());
                       use(found);
                   }).cpu;
    return {figure};
}

} // namespace ludarium
