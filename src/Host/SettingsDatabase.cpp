#include "Host/SettingsDatabase.h"

#include "Host/SettingsValues.h"

#include <QCryptographicHash>
#include <QFile>
#include <QUrl>
#include <cstring>

namespace ludarium {

using namespace Qt::StringLiterals;
using SettingsValues::failAsDamaged;

namespace {

constexpr qint64 schemaVersion = 2;

/// How long a write waits for those of other processes: a dozen at once on a slow disk take seconds.
constexpr int busyTimeout = 20'000;

constexpr char tables[] = "CREATE TABLE value(key TEXT PRIMARY KEY NOT NULL, revision INTEGER NOT NULL,"
                          "                   type INTEGER NOT NULL, value, sum INTEGER) WITHOUT ROWID;"
                          "CREATE TABLE entry(key TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, value,"
                          "                   sum INTEGER, PRIMARY KEY(key, name)) WITHOUT ROWID;"
                          "PRAGMA user_version=2;";

/// Version 1 had no checksums.
constexpr char migration[] = "ALTER TABLE value ADD COLUMN sum INTEGER;"
                             "ALTER TABLE entry ADD COLUMN sum INTEGER;"
                             "UPDATE value SET sum = row_sum(key, revision, type, value);"
                             "UPDATE entry SET sum = row_sum(key, name, type, value);"
                             "PRAGMA user_version=2;";

/// row_sum(column, …): a checksum over what the columns hold, each with its type. It finds what a disk or a stray
/// write changed, not what a person did on purpose.
void rowSum(sqlite3_context *context, int count, sqlite3_value **columns) {
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (int i = 0; i < count; ++i) {
        const int type = sqlite3_value_type(columns[i]);
        qint64 size = sizeof(qint64);
        QByteArray bytes(size, Qt::Uninitialized);
        if (type == SQLITE_INTEGER) {
            const qint64 number = sqlite3_value_int64(columns[i]);
            std::memcpy(bytes.data(), &number, sizeof number);
        } else if (type == SQLITE_FLOAT) {
            const double number = sqlite3_value_double(columns[i]);
            std::memcpy(bytes.data(), &number, sizeof number);
        } else if (type == SQLITE_NULL) {
            bytes.clear();
        } else {
            const auto *data = static_cast<const char *>(sqlite3_value_blob(columns[i]));
            bytes = QByteArray::fromRawData(data, sqlite3_value_bytes(columns[i]));
        }
        size = bytes.size();
        hash.addData(QByteArrayView(reinterpret_cast<const char *>(&type), sizeof type));
        hash.addData(QByteArrayView(reinterpret_cast<const char *>(&size), sizeof size));
        hash.addData(bytes);
    }
    qint64 sum = 0;
    std::memcpy(&sum, hash.result().constData(), sizeof sum);
    sqlite3_result_int64(context, sum);
}

void addRowSum(const SqliteDatabase &database) {
    sqlite3_create_function_v2(database.handle(), "row_sum", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, rowSum,
                               nullptr, nullptr, nullptr);
}

std::unique_ptr<SqliteDatabase> openToWrite(const QString &file) {
    auto database = std::make_unique<SqliteDatabase>(QFile::encodeName(file), SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(database->handle(), busyTimeout);
    addRowSum(*database);
    return database;
}

} // namespace

std::unique_ptr<SettingsDatabase> SettingsDatabase::open(const QString &file) {
    auto database = openToWrite(file);
    const QString mode = database->text("PRAGMA journal_mode=WAL");
    if (mode != QLatin1String("wal"))
        throw SqliteError(SQLITE_READONLY, u"a write-ahead log cannot be used here"_s);
    // FULL flushes the log at every commit: what was written survives a loss of power.
    database->run("PRAGMA synchronous=FULL; PRAGMA wal_autocheckpoint=64;");
    const auto version = [&] { return database->integer("PRAGMA user_version"); };
    if (version() < schemaVersion) {
        database->run("BEGIN IMMEDIATE");
        if (const qint64 found = version(); found < schemaVersion)
            database->run(found == 0 ? tables : migration);
        database->run("COMMIT");
        // On a disk that fills up later, the file has its pages and the log can be folded into them.
        database->run("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(std::move(database)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::openToRepair(const QString &file) {
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(openToWrite(file)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::openReadOnly(const QString &file) {
    QUrl uri = QUrl::fromLocalFile(file);
    uri.setQuery(u"immutable=1"_s);
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(
        std::make_unique<SqliteDatabase>(uri.toEncoded(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::fromImage(const QByteArray &image) {
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(std::make_unique<SqliteDatabase>(image)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::inMemory() {
    auto database = std::make_unique<SqliteDatabase>(QByteArray(":memory:"), SQLITE_OPEN_READWRITE);
    database->run(tables);
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(std::move(database)));
}

SettingsDatabase::SettingsDatabase(std::unique_ptr<SqliteDatabase> database) : m_database(std::move(database)) {
    addRowSum(*m_database);
    const qint64 version = m_database->integer("PRAGMA user_version");
    if (version > schemaVersion)
        throw SqliteError(SQLITE_MISMATCH, u"it was made by a newer version of the program"_s);
    if (version < 1)
        failAsDamaged("it has no settings");
    const auto prepare = [this](const QByteArray &sql) {
        try {
            return std::make_unique<SqliteStatement>(m_database->handle(), sql.constData());
        } catch (const SqliteError &error) {
            if (error.code == SQLITE_ERROR) // a table is missing
                failAsDamaged(error.what());
            throw;
        }
    };
    // A row without a checksum was written by an older version.
    m_hasSums = version == schemaVersion;
    const auto intact = [this](const char *columns) {
        return m_hasSums ? QByteArray("sum IS NULL OR sum = row_sum(") + columns + ')' : QByteArray("1");
    };
    m_begin = prepare("BEGIN IMMEDIATE");
    m_commit = prepare("COMMIT");
    m_dataVersion = prepare("PRAGMA data_version");
    m_changes = prepare("SELECT key, revision, type, value, " + intact("key, revision, type, value") +
                        " FROM value WHERE revision > ?");
    m_entries = prepare("SELECT name, type, value, " + intact("key, name, type, value") +
                        " FROM entry WHERE key = ? ORDER BY name");
    if (!m_hasSums)
        return; // nothing is written into such a one
    m_writeKey = prepare("INSERT OR REPLACE INTO value(key, revision, type, value, sum) "
                         "VALUES(?1, ?2, ?3, ?4, row_sum(?1, ?2, ?3, ?4))");
    m_writeEntry = prepare("INSERT OR REPLACE INTO entry(key, name, type, value, sum) "
                           "VALUES(?1, ?2, ?3, ?4, row_sum(?1, ?2, ?3, ?4))");
    m_removeEntry = prepare("DELETE FROM entry WHERE key = ? AND name = ?");
    m_removeEntries = prepare("DELETE FROM entry WHERE key = ?");
}

SettingsDatabase::Changes SettingsDatabase::changesSince(qint64 &revision) {
    // One snapshot for both tables; nothing to end inside a transaction.
    const bool own = sqlite3_get_autocommit(m_database->handle()) != 0;
    if (own)
        m_database->run("BEGIN");
    Changes changes;
    qint64 newest = revision;
    try {
        m_changes->bind(1, revision);
        while (m_changes->step()) {
            if (m_changes->columnType(0) != SQLITE_TEXT || m_changes->columnType(1) != SQLITE_INTEGER ||
                m_changes->columnType(2) != SQLITE_INTEGER)
                failAsDamaged("a key cannot be read");
            if (m_changes->integer(4) == 0)
                failAsDamaged("a value is not the one that was written");
            const QString key = m_changes->text(0);
            newest = qMax(newest, m_changes->integer(1));
            QVariant value = SettingsValues::read(*m_changes, 2, 3);
            if (value.typeId() == QMetaType::QVariantMap)
                value = readEntries(key);
            changes.insert(key, value);
        }
    } catch (...) {
        m_changes->reset();
        m_entries->reset();
        if (own)
            rollback();
        throw;
    }
    if (own)
        m_database->run("COMMIT");
    revision = newest;
    return changes;
}

QVariantMap SettingsDatabase::readEntries(const QString &key) {
    QVariantMap map;
    m_entries->bind(1, key);
    while (m_entries->step()) {
        if (m_entries->columnType(0) != SQLITE_TEXT || m_entries->columnType(1) != SQLITE_INTEGER)
            failAsDamaged("an entry cannot be read");
        if (m_entries->integer(3) == 0)
            failAsDamaged("an entry is not the one that was written");
        const QVariant value = SettingsValues::read(*m_entries, 1, 2);
        if (!value.isValid() || value.typeId() == QMetaType::QVariantMap)
            failAsDamaged("an entry has a type that entries cannot have");
        map.insert(map.cend(), m_entries->text(0), value);
    }
    return map;
}

qint64 SettingsDatabase::dataVersion() {
    m_dataVersion->step();
    const qint64 version = m_dataVersion->integer(0);
    m_dataVersion->reset();
    return version;
}

void SettingsDatabase::begin() {
    m_begin->run();
}

void SettingsDatabase::commit() {
    m_commit->run();
}

void SettingsDatabase::rollback() noexcept {
    // SQLite has rolled back by itself after some errors; then there is nothing to do.
    if (sqlite3_get_autocommit(m_database->handle()) == 0)
        sqlite3_exec(m_database->handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SettingsDatabase::writeKey(const QString &key, qint64 revision, const QVariant &value) {
    m_writeKey->bind(1, key);
    m_writeKey->bind(2, revision);
    SettingsValues::bind(*m_writeKey, 3, 4, value);
    m_writeKey->run();
}

void SettingsDatabase::writeEntry(const QString &key, const QString &entry, const QVariant &value) {
    SqliteStatement &statement = value.isValid() ? *m_writeEntry : *m_removeEntry;
    statement.bind(1, key);
    statement.bind(2, entry);
    if (value.isValid())
        SettingsValues::bind(statement, 3, 4, value);
    statement.run();
}

void SettingsDatabase::removeEntries(const QString &key) {
    m_removeEntries->bind(1, key);
    m_removeEntries->run();
}

void SettingsDatabase::foldLog() {
    m_database->run("PRAGMA wal_checkpoint(TRUNCATE)");
}

} // namespace ludarium
