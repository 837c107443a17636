#pragma once

#include <QString>
#include <QStringList>

namespace ludarium::test {

/// A small collection of invented games with drawn covers, some without.
class FixtureCollection {
  public:
    struct Entry {
        QString title;
        QString platform;
        int year;
        QString developer;
        QString genre;
        bool hasCover;
    };
    static const QList<Entry> &entries();
    /// The same, with variants of the first six on another platform, and with titles that are hard to show.
    static QList<Entry> entriesWithVariants();

    /// Writes the collection below `folder`, which is made.
    static void write(const QString &folder, const QList<Entry> &games = entries());
    /// Writes one file and makes its folder; throws when that fails.
    static void put(const QString &path, const QByteArray &content);
};

/// Spins the event loop until `condition` holds or `milliseconds` have passed; whether it held.
template<typename Condition>
bool waitUntil(Condition condition, int milliseconds = 10'000);

} // namespace ludarium::test

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

template<typename Condition>
bool ludarium::test::waitUntil(Condition condition, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return true;
}
