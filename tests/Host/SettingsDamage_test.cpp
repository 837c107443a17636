#include "Host/SqliteDatabase.h"
#include "Host/SqliteSettingsStore.h"
#include "support/TestHost.h"

#include <QRandomGenerator>
#include <QtEndian>
#include <sys/mount.h>
#include <unistd.h>

using namespace ludarium;

namespace {

constexpr Setting<QString> text{"text"};
constexpr Setting<QMap<QString, QString>> notes{"gameNotes"};

QByteArray readAll(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString &path, qint64 offset, const QByteArray &bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(offset);
    file.write(bytes);
}

class SettingsDamageTest : public testing::Test {
  protected:
    test::TestHost host; // collects the log
    const QString folder = host.scratch();
    const QString file = folder + QStringLiteral("/settings.sqlite");

    std::unique_ptr<SqliteSettingsStore> open(const QString &in) { return std::make_unique<SqliteSettingsStore>(in); }
    std::unique_ptr<SqliteSettingsStore> open() { return open(folder); }

    QStringList files(const QString &pattern) { return QDir(folder).entryList({pattern}, QDir::Files); }

    /// Four runs of the program, each writing its number; the last one leaves "4", with "3" as the newest generation.
    void makeHistory() {
        for (int run = 1; run <= 4; ++run) {
            const auto store = open();
            store->setValue(text, QString::number(run));
            store->transaction([&] {
                for (int i = 0; i < 200; ++i)
                    store->setEntry(notes, QString::number(i), QString(100, QChar(u'a' + i % 26)));
            });
        }
    }
};

} // namespace

TEST_F(SettingsDamageTest, KeepsThreeGenerationsAndNoneForARunThatChangesNothing) {
    makeHistory();
    EXPECT_EQ(files(QStringLiteral("*.kept-*")).size(), 3);
    open(); // keeps run 4
    const QStringList kept = files(QStringLiteral("*.kept-*"));
    EXPECT_EQ(kept.size(), 3);
    open();
    open();
    EXPECT_EQ(files(QStringLiteral("*.kept-*")), kept);
}

TEST_F(SettingsDamageTest, RestoresTheNewestReadableGenerationAndSetsTheDamagedFileAside) {
    struct Case {
        const char *name;
        std::function<void()> damage;
        QString expected;
    };
    const auto kept = [this](int index) { // the newest first
        QStringList names = files(QStringLiteral("*.kept-*"));
        std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
            return a.section(QLatin1Char('-'), -1).toInt() > b.section(QLatin1Char('-'), -1).toInt();
        });
        return folder + QLatin1Char('/') + names.at(index);
    };
    const Case cases[] = {
        {"overwritten by a text", [&] { host.put(file.mid(host.root().size()), "this is no database at all"); },
         QStringLiteral("3")},
        {"zeros in the header", [&] { overwrite(file, 0, QByteArray(4096, '\0')); }, QStringLiteral("3")},
        {"zeros in the last page", [&] { overwrite(file, QFileInfo(file).size() - 4096, QByteArray(4096, '\0')); },
         QStringLiteral("4")}, // stands in another page
        {"cut in half", [&] { QFile::resize(file, QFileInfo(file).size() / 2); }, QStringLiteral("3")},
        {"empty", [&] { QFile::resize(file, 0); }, QStringLiteral("3")},
        {"missing", [&] { QFile::remove(file); }, QStringLiteral("3")},
        {"the newest generation damaged too",
         [&] {
             overwrite(kept(0), 0, QByteArray(100, 'x'));
             QFile::resize(file, 5000);
         },
         QStringLiteral("2")},
        {"everything damaged",
         [&] {
             for (int i = 0; i < 3; ++i)
                 QFile::resize(kept(i), 100);
             overwrite(file, 0, QByteArray(100, 'x'));
         },
         QString()},
    };
    for (const Case &damaged : cases) {
        SCOPED_TRACE(damaged.name);
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        makeHistory();
        damaged.damage();
        const bool hadFile = QFileInfo(file).size() > 0;
        const QByteArray damagedBytes = readAll(file);
        const auto store = open();
        EXPECT_EQ(store->value(text), damaged.expected);
        EXPECT_EQ(store->value(notes).size(), damaged.expected.isNull() ? 0 : 200);
        EXPECT_EQ(store->problem(), QString());
        EXPECT_TRUE(store->notice().contains(QStringLiteral("damaged"))) << store->notice().toStdString();
        const QStringList aside = files(QStringLiteral("settings.sqlite.corrupt-*"));
        if (hadFile) {
            ASSERT_EQ(aside.size(), 1);
            EXPECT_EQ(readAll(folder + QLatin1Char('/') + aside.constFirst()), damagedBytes);
        }
        EXPECT_TRUE(host.log().contains(QLatin1String("are damaged"))) << host.log().toStdString();

        store->setValue(text, QStringLiteral("new"));
        EXPECT_EQ(open()->value(text), QStringLiteral("new"));
    }
}

/// SQLite reads such a file as if nothing were wrong and refuses every write that needs a page of the list.
TEST_F(SettingsDamageTest, RebuildsAStoreThatCannotBeWrittenAnyMore) {
    for (const bool others : {false, true}) {
        SCOPED_TRACE(others ? "beside another program" : "alone");
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        makeHistory();
        {
            const auto store = open();
            store->transaction([&] {
                for (int i = 50; i < 200; ++i) // frees pages
                    store->removeEntry(notes, QString::number(i));
            });
        }
        const QByteArray header = readAll(file).first(100);
        const quint32 trunk = qFromBigEndian<quint32>(header.constData() + 32);
        ASSERT_GT(trunk, 0u) << "no page is free";
        overwrite(file, qint64(trunk - 1) * 4096 + 4, QByteArray(4, '\xff'));

        const auto other = others ? open() : nullptr;
        const auto store = open();
        EXPECT_EQ(store->repairNotice(), QString());
        EXPECT_EQ(store->value(text), QStringLiteral("4"));
        for (int i = 0; i < 40; ++i)
            store->setEntry(notes, QStringLiteral("new %1").arg(i), QString(3000, u'n'));
        EXPECT_NE(store->repairNotice(), QString());
        EXPECT_EQ(store->value(notes).size(), 50 + 40) << "what was removed stays removed";
        EXPECT_EQ(store->value(text), QStringLiteral("4"));
        EXPECT_EQ(files(QStringLiteral("settings.sqlite.corrupt-*")).size(), 1);
        if (other) {
            EXPECT_EQ(other->value(notes), store->value(notes));
            other->setValue(text, QStringLiteral("5"));
            EXPECT_EQ(other->repairNotice(), QString());
        }
        EXPECT_EQ(open()->value(text), others ? QStringLiteral("5") : QStringLiteral("4"));
    }
}

TEST_F(SettingsDamageTest, FindsAByteThatNobodyWroteAndTakesTheOlderValue) {
    for (const bool alone : {true, false}) {
        SCOPED_TRACE(alone);
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        makeHistory();
        const QString wanted = QString(50, u'w') + QString(50, u'W');
        open()->setEntry(notes, QStringLiteral("7"), wanted);
        const auto other = alone ? nullptr : open(); // keeps the generation
        if (alone)
            open();
        {
            const auto store = open();
            store->setValue(text, QStringLiteral("newest"));
        }
        if (other)
            other->value(text);
        QByteArray bytes = readAll(file);
        const qsizetype at = bytes.indexOf(wanted.toUtf8());
        ASSERT_GT(at, 0);
        overwrite(file, at + 20, "v");
        const auto store = open();
        EXPECT_EQ(store->value(notes).value(QStringLiteral("7")), wanted);
        EXPECT_EQ(store->value(notes).size(), 200);
        EXPECT_EQ(store->value(text), QStringLiteral("newest"));
        EXPECT_THAT(store->repairNotice().toStdString(), testing::HasSubstr("1 value came from an older copy"));
        store->setEntry(notes, QStringLiteral("8"), QStringLiteral("goes on"));
        EXPECT_EQ(open()->repairNotice(), QString());
    }
}

TEST_F(SettingsDamageTest, TellsOfAValueThatNoCopyHolds) {
    const QString note = QStringLiteral("written a moment ago");
    {
        const auto store = open();
        store->setEntry(notes, QStringLiteral("1"), note);
        store->setValue(text, QStringLiteral("kept"));
    }
    overwrite(file, readAll(file).lastIndexOf(note.toUtf8()), "W");
    const auto store = open();
    EXPECT_TRUE(store->value(notes).isEmpty());
    EXPECT_EQ(store->value(text), QStringLiteral("kept"));
    EXPECT_THAT(store->repairNotice().toStdString(), testing::HasSubstr("1 value is lost"));
}

/// A store of the version before had no checksums: it opens, keeps all, and has them from then on.
TEST_F(SettingsDamageTest, TakesOverAStoreWithoutChecksums) {
    const QMap<QString, QString> written{{QStringLiteral("a"), QStringLiteral("first note")}};
    {
        const SqliteDatabase old(QFile::encodeName(file), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        const_cast<SqliteDatabase &>(old).run(
            "PRAGMA journal_mode=WAL;"
            "CREATE TABLE value(key TEXT PRIMARY KEY NOT NULL, revision INTEGER NOT NULL, type INTEGER NOT NULL,"
            " value) WITHOUT ROWID;"
            "CREATE TABLE entry(key TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, value,"
            " PRIMARY KEY(key, name)) WITHOUT ROWID;"
            "INSERT INTO value VALUES('text', 3, 1, 'old text'), ('gameNotes', 2, 8, NULL);"
            "INSERT INTO entry VALUES('gameNotes', 'a', 1, 'first note');"
            "PRAGMA user_version=1;");
    }
    EXPECT_EQ(open()->value(text), QStringLiteral("old text"));
    EXPECT_EQ(open()->value(notes), written);
    const QByteArray bytes = readAll(file);
    overwrite(file, bytes.lastIndexOf("first note"), "F");
    const auto store = open();
    EXPECT_EQ(store->value(notes), written);
    EXPECT_NE(store->repairNotice(), QString());
}

TEST_F(SettingsDamageTest, TellsThatItCannotBeRead) {
    EXPECT_EQ(open()->readProblem(), QString());
    QFile::remove(file);
    QDir(folder).mkpath(file); // stands for whatever keeps the system from reading it
    const auto store = open();
    EXPECT_NE(store->readProblem(), QString());
    EXPECT_THROW(store->setValue(text, QStringLiteral("x")), SettingsError);
}

TEST_F(SettingsDamageTest, LeavesTheStoreOfANewerProgramAlone) {
    open()->setValue(text, QStringLiteral("x"));
    overwrite(file, 60, QByteArray("\0\0\0\x09", 4)); // the version that a program gives its tables
    const QByteArray before = readAll(file);
    const auto store = open();
    EXPECT_FALSE(store->problem().isEmpty());
    EXPECT_THROW(store->setValue(text, QStringLiteral("y")), SettingsError);
    EXPECT_EQ(readAll(file), before);
    EXPECT_TRUE(files(QStringLiteral("*.corrupt-*")).isEmpty());
}

namespace {

/// A file system of its own below the test's folder.
class Mount {
  public:
    Mount(const QString &folder, const char *options) : m_folder(QFile::encodeName(folder)) {
        QDir().mkpath(folder);
        m_mounted = ::mount("tmpfs", m_folder.constData(), "tmpfs", 0, options) == 0;
    }
    ~Mount() {
        if (m_mounted)
            ::umount2(m_folder.constData(), MNT_DETACH);
    }
    explicit operator bool() const { return m_mounted; }
    bool makeReadOnly(bool readOnly) {
        return ::mount("tmpfs", m_folder.constData(), "tmpfs", MS_REMOUNT | (readOnly ? MS_RDONLY : 0), nullptr) == 0;
    }

  private:
    const QByteArray m_folder;
    bool m_mounted = false;
};

void fill(const QString &path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (const qint64 size : {65536, 4096, 512, 1})
        while (file.write(QByteArray(size, 'f')) == size) {
        }
}

} // namespace

TEST_F(SettingsDamageTest, KeepsTheOldValuesOnAFullDiskAndWritesAgainWhenThereIsRoom) {
    const QString disk = folder + QStringLiteral("/disk");
    const Mount mount(disk, "size=1m");
    if (!mount)
        GTEST_SKIP() << "needs the right to mount a file system";
    auto store = open(disk);
    store->setValue(text, QStringLiteral("before"));
    fill(disk + QStringLiteral("/filler"));
    QMap<QString, QString> acknowledged;
    bool refused = false;
    for (int i = 0; i < 1000 && !refused; ++i) {
        const QString note(500, QChar(u'a' + i % 26));
        try {
            store->setEntry(notes, QString::number(i), note);
            acknowledged.insert(QString::number(i), note);
        } catch (const SettingsError &error) {
            refused = true;
            EXPECT_STREQ(error.what(), "The settings cannot be saved: No space left on device");
        }
    }
    EXPECT_TRUE(refused);
    EXPECT_EQ(store->value(text), QStringLiteral("before"));
    EXPECT_EQ(store->value(notes), acknowledged) << "a refused write is not in memory either";

    store = open(disk); // a start of the program on the full disk
    EXPECT_EQ(store->value(text), QStringLiteral("before"));
    EXPECT_EQ(store->value(notes), acknowledged);

    QFile::remove(disk + QStringLiteral("/filler"));
    store->setValue(text, QStringLiteral("after"));
    store = open(disk);
    EXPECT_EQ(store->value(text), QStringLiteral("after"));
    EXPECT_EQ(store->value(notes), acknowledged);
}

TEST_F(SettingsDamageTest, FoldsItsLogInWhenADiskIsNearlyFull) {
    const QString disk = folder + QStringLiteral("/disk");
    const Mount mount(disk, "size=512k");
    if (!mount)
        GTEST_SKIP() << "needs the right to mount a file system";
    const auto store = open(disk);
    // Many small writes: their log would be larger than the disk, the values are not.
    for (int i = 0; i < 500; ++i)
        store->setValue(text, QString::number(i));
    EXPECT_EQ(open(disk)->value(text), QStringLiteral("499"));
}

TEST_F(SettingsDamageTest, ReadsButDoesNotWriteInAReadOnlyFolder) {
    const QString disk = folder + QStringLiteral("/disk");
    Mount mount(disk, "size=4m");
    if (!mount)
        GTEST_SKIP() << "needs the right to mount a file system";
    for (const bool newestInLog : {false, true}) {
        SCOPED_TRACE(newestInLog);
        auto store = open(disk);
        store->setValue(text, QStringLiteral("old"));
        if (newestInLog) {
            // As after a crash: the log is left beside the store.
            const QString copy = folder + QStringLiteral("/copy");
            QDir().mkpath(copy);
            for (const char *name : {"/settings.sqlite", "/settings.sqlite-wal"})
                ASSERT_TRUE(QFile::copy(disk + QLatin1String(name), copy + QLatin1String(name)));
            store.reset();
            for (const char *name : {"/settings.sqlite", "/settings.sqlite-wal"}) {
                QFile::remove(disk + QLatin1String(name));
                ASSERT_TRUE(QFile::copy(copy + QLatin1String(name), disk + QLatin1String(name)));
            }
        }
        store.reset();
        ASSERT_TRUE(mount.makeReadOnly(true));
        store = open(disk);
        EXPECT_EQ(store->value(text), QStringLiteral("old"));
        EXPECT_FALSE(store->problem().isEmpty());
        EXPECT_TRUE(store->notice().contains(store->problem()));
        EXPECT_THROW(store->setValue(text, QStringLiteral("new")), SettingsError);
        EXPECT_EQ(store->value(text), QStringLiteral("old"));
        ASSERT_TRUE(mount.makeReadOnly(false));
        store->setValue(text, QStringLiteral("new"));
        EXPECT_EQ(open(disk)->value(text), QStringLiteral("new"));
        store.reset();
    }
}
