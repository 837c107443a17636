// What one write of the settings store costs, beside what the disk asks for one flushed page, and what the favourites
// of a whole collection cost, beside what it asks for the same bytes.

#include "Host/SqliteSettingsStore.h"
#include "Services/Library/UserData.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace ludarium;

namespace {

constexpr int rounds = 1000;
constexpr Setting<QMap<QString, qint64>> counts{"playCounts"};
constexpr Setting<QString> text{"collectionPath"};

template<typename Action>
void report(const char *what, int count, Action action) {
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i)
        action(i);
    std::printf("%-52s %10.2f µs\n", what, double(timer.nsecsElapsed()) / 1000.0 / count);
}

QString entry(int i) {
    return QStringLiteral("7d0b3a52-6f0e-5d3c-9b1e-%1").arg(i, 12, 10, QLatin1Char('0'));
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    // The store's own file system, not a temporary one in memory: pass a folder on the disk to measure.
    QTemporaryDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) + QStringLiteral("/settings-XXXXXX")
                                  : QDir::tempPath() + QStringLiteral("/settings-XXXXXX"));

    const int floor = ::open(QFile::encodeName(folder.filePath(QStringLiteral("floor"))).constData(),
                             O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const QByteArray page(4096, 'x');
    report("floor: append a page and fdatasync", rounds, [&](int) {
        if (::write(floor, page.constData(), size_t(page.size())) != page.size() || ::fdatasync(floor) != 0)
            std::abort();
    });
    ::close(floor);

    SqliteSettingsStore store(folder.path());
    QMap<QString, qint64> large;
    for (int i = 0; i < 10'000; ++i)
        large.insert(entry(i), i);
    report("write a map of 10,000 entries at once", 1, [&](int) { store.setValue(counts, large); });
    report("write one entry of it", rounds, [&](int i) { store.setEntry(counts, entry(i * 7), -1LL - i); });
    report("write a text", rounds, [&](int i) { store.setValue(text, QString::number(i)); });
    report("write 1,000 entries in one transaction", 1, [&](int) {
        store.transaction([&] {
            for (int i = 0; i < rounds; ++i)
                store.setEntry(counts, entry(i), 7LL + i);
        });
    });
    report("read a text", 100 * rounds, [&](int) { store.value(text); });
    report("open with 10,000 entries", 20, [&](int) { SqliteSettingsStore again(folder.path()); });

    // As `batch add-to-favorites --all` writes them on a collection of the usual size.
    constexpr int favorites = 7580;
    constexpr int together = 1000;
    UserData user(store);
    report("7,580 favorites in writes of 1,000 games", 1, [&](int) {
        for (int first = 0; first < favorites; first += together) {
            QStringList ids;
            for (int i = first; i < std::min(first + together, favorites); ++i)
                ids.append(entry(i));
            user.setFavorites(ids, true);
        }
    });
    report("floor: the same bytes, appended and flushed as often", 1, [&](int) {
        const int file = ::open(QFile::encodeName(folder.filePath(QStringLiteral("lists"))).constData(),
                                O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        for (int first = 0; first < favorites; first += together) {
            const QByteArray list(std::min(first + together, favorites) * (entry(0).size() + 3), 'x');
            if (::write(file, list.constData(), size_t(list.size())) != list.size() || ::fdatasync(file) != 0)
                std::abort();
        }
        ::close(file);
    });
    return 0;
}
