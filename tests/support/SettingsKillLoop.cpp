#include "support/SettingsKillLoop.h"

#include "Host/SqliteSettingsStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <gtest/gtest.h>
#include <random>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ludarium::test {

namespace {

constexpr int writers = 2;

QString mapKey(int writer) {
    return QStringLiteral("writer %1").arg(writer);
}

QString counterKey(int writer) {
    return QStringLiteral("counter %1").arg(writer);
}

/// What a writer keeps under a number: of changing length, so that pages split and free up.
QString content(int writer, qint64 number) {
    const QByteArray hash = QCryptographicHash::hash(QByteArray::number(writer) + '/' + QByteArray::number(number),
                                                     QCryptographicHash::Sha256)
                                .toHex();
    return QString::fromLatin1(hash.repeated(1 + int(number % 7) * 5));
}

/// Each step writes an entry and the counter together, and drops an old entry; then the ledger learns of it.
[[noreturn]] void writeUntilKilled(const QString &folder, int writer, int ledger) {
    try {
        SqliteSettingsStore store(folder);
        for (qint64 number = store.rawValue(counterKey(writer)).toLongLong() + 1;; ++number) {
            store.transaction([&] {
                store.setRawEntry(mapKey(writer), QString::number(number % 500), content(writer, number));
                store.setRawValue(counterKey(writer), number);
            });
            if (::write(ledger, &number, sizeof number) != sizeof number)
                ::_exit(2);
        }
    } catch (...) {
        ::_exit(3);
    }
}

void check(const QString &folder, const qint64 (&acknowledged)[writers]) {
    const SqliteSettingsStore store(folder);
    ASSERT_EQ(store.problem(), QString());
    for (int writer = 0; writer < writers; ++writer) {
        const qint64 counter = store.rawValue(counterKey(writer)).toLongLong();
        EXPECT_GE(counter, acknowledged[writer]) << "an acknowledged write is lost";
        EXPECT_LE(counter, acknowledged[writer] + 1) << "at most one write was under way";
        const QVariantMap map = store.rawValue(mapKey(writer)).toMap();
        EXPECT_EQ(map.size(), qMin<qint64>(counter, 500));
        for (qint64 number = qMax<qint64>(1, counter - 499); number <= counter; ++number)
            ASSERT_EQ(map.value(QString::number(number % 500)).toString(), content(writer, number)) << number;
    }
    EXPECT_TRUE(QDir(folder).entryList({QStringLiteral("*.corrupt-*")}).isEmpty()) << "nothing may look damaged";
}

} // namespace

void runSettingsKillLoop(const QString &folder, int rounds, unsigned seed) {
    std::mt19937 random(seed);
    qint64 acknowledged[writers] = {};
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        pid_t children[writers];
        int ledgers[writers];
        for (int writer = 0; writer < writers; ++writer) {
            int ends[2];
            ASSERT_EQ(::pipe(ends), 0);
            children[writer] = ::fork();
            ASSERT_GE(children[writer], 0);
            if (children[writer] == 0) {
                ::close(ends[0]);
                writeUntilKilled(folder, writer, ends[1]);
            }
            ::close(ends[1]);
            ledgers[writer] = ends[0];
        }
        // Early moments catch a store that is just being opened, later ones the writes.
        ::usleep(std::uniform_int_distribution<unsigned>(0, round % 2 == 0 ? 60'000 : 400'000)(random));
        for (int writer = 0; writer < writers; ++writer) {
            ::kill(children[writer], SIGKILL);
            int status = 0;
            ::waitpid(children[writer], &status, 0);
            EXPECT_TRUE(WIFSIGNALED(status)) << "a writer ended by itself with " << WEXITSTATUS(status);
            qint64 number = 0;
            while (::read(ledgers[writer], &number, sizeof number) == sizeof number)
                acknowledged[writer] = number;
            ::close(ledgers[writer]);
        }
        check(folder, acknowledged);
        // A write that was kept but not acknowledged any more counts from now on.
        const SqliteSettingsStore store(folder);
        for (int writer = 0; writer < writers; ++writer)
            acknowledged[writer] = store.rawValue(counterKey(writer)).toLongLong();
    }
    EXPECT_GT(acknowledged[0] + acknowledged[1], rounds) << "the writers wrote";
}

} // namespace ludarium::test
