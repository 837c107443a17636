#include "Host/SqliteSettingsStore.h"

#include "Host/LogRedactor.h"
#include "Host/SettingsValues.h"
#include "support/TestHost.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QTimeZone>
#include <cmath>
#include <sys/stat.h>

using namespace ludarium;

namespace {

constexpr Setting<QMap<QString, qint64>> counts{"counts"};
constexpr Setting<QString> text{"text", u"fallback"};
constexpr Setting<bool> flag{"flag", true};

class SqliteSettingsStoreTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    std::unique_ptr<SqliteSettingsStore> store = open();

    std::unique_ptr<SqliteSettingsStore> open() { return std::make_unique<SqliteSettingsStore>(folder.path()); }
    void reopen() {
        store.reset();
        store = open();
    }
};

/// Keys that a store reports as changed.
struct ChangeList {
    explicit ChangeList(SettingsStore &store) {
        QObject::connect(&store, &SettingsStore::changed, &context, [this](const QString &key) { keys << key; });
    }
    QObject context;
    QStringList keys;
};

void processEventsUntil(const std::function<bool()> &done) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
}

} // namespace

TEST_F(SqliteSettingsStoreTest, KeepsEveryTypeOfValueAcrossAReopening) {
    const QDateTime utc(QDate(2026, 3, 14), QTime(15, 9, 26, 535), Qt::UTC);
    const QMap<const char *, QVariant> values{
        {"text", QStringLiteral("naïve \U0001F3AE\n\"quoted\"")},
        {"text with NUL", QString::fromUtf8("a\0b", 3)},
        {"empty text", QLatin1String("").toString()},
        {"null text", QString()},
        {"integer", std::numeric_limits<qint64>::min()},
        {"real", 0.1},
        {"whole real", 3.0},
        {"infinite real", std::numeric_limits<double>::infinity()},
        {"flag", false},
        {"date UTC", utc},
        {"date local", QDateTime(QDate(1995, 1, 13), QTime(3, 0, 0, 7))},
        {"date offset", utc.toOffsetFromUtc(-5 * 3600)},
        {"date zone", utc.toTimeZone(QTimeZone("Asia/Tokyo"))},
        {"no date", QDateTime()},
        {"data", QByteArray("\0\xff\x01", 3)},
        {"empty data", QByteArray("")},
        {"list", QStringList{QStringLiteral("b"), QString(), QStringLiteral("a,\"b\"")}},
        {"empty list", QStringList()},
        {"map", QVariantMap{{QStringLiteral("x"), 1LL}, {QStringLiteral("ü'"), QStringLiteral("y")}, {{}, utc}}},
        {"empty map", QVariantMap()},
    };
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        store->setRawValue(QString::fromLatin1(it.key()), it.value());
    for (int round = 0; round < 2; ++round) {
        for (auto it = values.cbegin(); it != values.cend(); ++it) {
            const QVariant read = store->rawValue(QString::fromLatin1(it.key()));
            EXPECT_TRUE(SettingsValues::isSame(read, it.value())) << it.key() << ", round " << round;
        }
        EXPECT_EQ(store->keys().size(), values.size());
        reopen();
    }
}

TEST_F(SqliteSettingsStoreTest, TellsAbsentValuesFromStoredOnesAndIgnoresThoseOfAnotherType) {
    EXPECT_TRUE(store->value(flag));
    EXPECT_EQ(store->value(text), QStringLiteral("fallback"));
    EXPECT_FALSE(store->contains(text));
    store->setValue(text, QString());
    EXPECT_TRUE(store->contains(text));
    store->setRawValue(QStringLiteral("flag"), QStringLiteral("false"));
    EXPECT_TRUE(store->value(flag)) << "a text is no flag";
    store->remove(text);
    store->remove(text);
    reopen();
    EXPECT_FALSE(store->contains(text));
    EXPECT_EQ(store->keys(), QStringList{QStringLiteral("flag")});
}

TEST_F(SqliteSettingsStoreTest, RefusesValuesThatItCannotKeep) {
    EXPECT_THROW(store->setRawValue(QStringLiteral("x"), QVariant::fromValue(QPoint(1, 2))), SettingsError);
    EXPECT_THROW(store->setRawValue(QStringLiteral("x"), QVariantMap{{QStringLiteral("a"), QVariantMap()}}),
                 SettingsError);
    EXPECT_THROW(store->setRawEntry(QStringLiteral("x"), QStringLiteral("a"), QVariantMap()), SettingsError);
    EXPECT_TRUE(store->keys().isEmpty());
}

TEST_F(SqliteSettingsStoreTest, KeepsMapsEntryByEntry) {
    store->setEntry(counts, QStringLiteral("doom"), 3LL);
    store->setEntry(counts, QStringLiteral("keen"), 1LL);
    store->setEntry(counts, QStringLiteral("doom"), 4LL);
    store->removeEntry(counts, QStringLiteral("keen"));
    store->removeEntry(counts, QStringLiteral("never"));
    reopen();
    EXPECT_EQ(store->value(counts), (QMap<QString, qint64>{{QStringLiteral("doom"), 4}}));

    // A whole map replaces the old one; a value of another type and back leaves nothing of it.
    store->setValue(counts, {{QStringLiteral("a"), 1}, {QStringLiteral("b"), 2}});
    reopen();
    EXPECT_EQ(store->value(counts).keys(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    store->transaction([&] {
        store->setRawValue(QStringLiteral("counts"), 7LL);
        store->setEntry(counts, QStringLiteral("c"), 3LL);
    });
    reopen();
    EXPECT_EQ(store->value(counts), (QMap<QString, qint64>{{QStringLiteral("c"), 3}}));
    store->removeEntry(counts, QStringLiteral("c"));
    reopen();
    EXPECT_TRUE(store->contains(counts)) << "an empty map is there";
}

TEST_F(SqliteSettingsStoreTest, WritesOneEntryOfALargeMapAlone) {
    QMap<QString, qint64> large;
    for (int i = 0; i < 10'000; ++i)
        large.insert(QStringLiteral("7d0b3a52-6f0e-5d3c-9b1e-%1").arg(i, 12, 10, QLatin1Char('0')), i);
    store->setValue(counts, large);
    reopen(); // folds the log into the file
    const auto logSize = [&] { return QFileInfo(store->file() + QStringLiteral("-wal")).size(); };
    const qint64 before = logSize();
    store->setEntry(counts, large.firstKey(), 99LL);
    EXPECT_LE(logSize() - before, 20'000) << "a few pages, not the map of half a megabyte";
    large.last() = 98;
    large.first() = 99;
    store->setValue(counts, large); // one entry differs
    EXPECT_LE(logSize() - before, 40'000);
    reopen();
    EXPECT_EQ(store->value(counts), large);
}

TEST_F(SqliteSettingsStoreTest, KeepsAllWritesOfATransactionOrNone) {
    store->setEntry(counts, QStringLiteral("a"), 1LL);
    store->setValue(text, QStringLiteral("before"));
    ChangeList changes(*store);
    EXPECT_THROW(store->transaction([&] {
        store->setValue(text, QStringLiteral("after"));
        store->setEntry(counts, QStringLiteral("a"), 2LL);
        store->setEntry(counts, QStringLiteral("b"), 2LL);
        store->remove(counts);
        store->transaction([&] { store->setValue(flag, false); });
        EXPECT_EQ(store->value(text), QStringLiteral("after")) << "its own writes are visible inside";
        throw std::runtime_error("changed my mind");
    }),
                 std::runtime_error);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(store->value(text), QStringLiteral("before"));
        EXPECT_EQ(store->value(counts), (QMap<QString, qint64>{{QStringLiteral("a"), 1}}));
        EXPECT_FALSE(store->contains(flag));
        EXPECT_TRUE(changes.keys.isEmpty());
        reopen();
    }
    store->transaction([&] {
        store->setValue(text, QStringLiteral("after"));
        store->setEntry(counts, QStringLiteral("b"), 2LL);
    });
    reopen();
    EXPECT_EQ(store->value(text), QStringLiteral("after"));
    EXPECT_EQ(store->value(counts).size(), 2);
}

TEST_F(SqliteSettingsStoreTest, TellsOfEachKeyThatHasANewValueOnce) {
    ChangeList changes(*store);
    store->setValue(text, QStringLiteral("x"));
    store->setValue(text, QStringLiteral("x"));
    store->transaction([&] {
        store->setEntry(counts, QStringLiteral("a"), 1LL);
        store->setEntry(counts, QStringLiteral("b"), 1LL);
        EXPECT_EQ(changes.keys, QStringList{QStringLiteral("text")}) << "not before it is kept";
    });
    store->remove(flag);
    EXPECT_EQ(changes.keys, (QStringList{QStringLiteral("text"), QStringLiteral("counts")}));
}

TEST_F(SqliteSettingsStoreTest, SeesWhatAnotherProcessWrites) {
    const auto other = open();
    other->setValue(text, QStringLiteral("theirs"));
    other->setEntry(counts, QStringLiteral("a"), 1LL);
    EXPECT_EQ(store->value(text), QStringLiteral("theirs"));
    store->setEntry(counts, QStringLiteral("b"), 2LL);
    EXPECT_EQ(other->value(counts).size(), 2);
    other->remove(text);
    EXPECT_FALSE(store->contains(text));
    store->transaction([&] {
        const qint64 a = store->value(counts).value(QStringLiteral("a"));
        store->setEntry(counts, QStringLiteral("a"), a + 1);
    });
    EXPECT_EQ(other->value(counts).value(QStringLiteral("a")), 2);
}

TEST_F(SqliteSettingsStoreTest, TellsOfAChangeByAnotherProcessWithoutBeingRead) {
    ChangeList changes(*store);
    const auto other = open();
    other->setValue(text, QStringLiteral("theirs"));
    other->setEntry(counts, QStringLiteral("a"), 1LL);
    processEventsUntil([&] { return changes.keys.contains(QStringLiteral("counts")); });
    EXPECT_EQ(QSet<QString>(changes.keys.cbegin(), changes.keys.cend()),
              (QSet<QString>{QStringLiteral("text"), QStringLiteral("counts")}));
}

TEST_F(SqliteSettingsStoreTest, KeepsItsFilesFromOtherUsers) {
    store->setValue(text, QStringLiteral("x"));
    reopen();
    store->setValue(text, QStringLiteral("y"));
    const QStringList files = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    EXPECT_GE(files.size(), 5) << "store, log, index, lock, generation";
    for (const QString &name : files) {
        struct stat info {};
        ASSERT_EQ(::stat(QFile::encodeName(folder.filePath(name)).constData(), &info), 0);
        EXPECT_EQ(info.st_mode & 0777, 0600u) << name.toStdString();
    }
}

TEST_F(SqliteSettingsStoreTest, KeepsPasswordsAndKeysOutOfTheLog) {
    store->setRawValue(QStringLiteral("screenscraper_password"), QStringLiteral("tr0ub4dor&3"));
    EXPECT_FALSE(LogRedactor::redacted(QStringLiteral("sent tr0ub4dor&3 to them")).contains(QLatin1String("tr0ub")));
}
