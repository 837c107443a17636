#include "Host/SqliteDatabase.h"

#include <cerrno>
#include <cstring>
#include <memory>

namespace ludarium {

namespace {

/// Offsets of the two format versions in a database header: 1 is a rollback journal, 2 a write-ahead log.
constexpr qsizetype writeVersionOffset = 18;
constexpr qsizetype readVersionOffset = 19;

void check(sqlite3 *database, int code) {
    if (code != SQLITE_OK)
        throw SqliteError(code, SqliteDatabase::reason(database, code));
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3 *database, const char *sql) {
    check(database, sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr));
}

void SqliteStatement::fail(int code) const {
    sqlite3 *database = sqlite3_db_handle(m_statement);
    const SqliteError error(code, SqliteDatabase::reason(database, code));
    sqlite3_reset(m_statement);
    throw error;
}

void SqliteStatement::bind(int index, qint64 value) {
    sqlite3_bind_int64(m_statement, index, value);
}

void SqliteStatement::bind(int index, double value) {
    sqlite3_bind_double(m_statement, index, value);
}

void SqliteStatement::bind(int index, const QString &text) {
    const QByteArray bytes = text.toUtf8();
    const int code = sqlite3_bind_text64(m_statement, index, bytes.constData(), sqlite3_uint64(bytes.size()),
                                         SQLITE_TRANSIENT, SQLITE_UTF8);
    if (code != SQLITE_OK)
        fail(code);
}

void SqliteStatement::bindData(int index, const QByteArray &data) {
    // A null pointer would store NULL instead of no bytes.
    const int code = sqlite3_bind_blob64(m_statement, index, data.isEmpty() ? "" : data.constData(),
                                         sqlite3_uint64(data.size()), SQLITE_TRANSIENT);
    if (code != SQLITE_OK)
        fail(code);
}

void SqliteStatement::bindNull(int index) {
    sqlite3_bind_null(m_statement, index);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        fail(code);
    sqlite3_reset(m_statement);
    return false;
}

void SqliteStatement::run() {
    while (step()) {
    }
}

void SqliteStatement::reset() {
    sqlite3_reset(m_statement);
}

QString SqliteStatement::text(int column) const {
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_statement, column));
}

QByteArray SqliteStatement::data(int column) const {
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    return QByteArray(bytes, sqlite3_column_bytes(m_statement, column));
}

SqliteDatabase::SqliteDatabase(const QByteArray &uri, int flags) {
    const int code = sqlite3_open_v2(uri.constData(), &m_database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        const SqliteError error(code, reason(m_database, code));
        sqlite3_close(m_database);
        throw error;
    }
}

SqliteDatabase::SqliteDatabase(const QByteArray &image)
    : SqliteDatabase(QByteArray(":memory:"), SQLITE_OPEN_READWRITE) {
    auto *copy = static_cast<unsigned char *>(sqlite3_malloc64(sqlite3_uint64(image.size())));
    if (!copy)
        throw SqliteError(SQLITE_NOMEM, QStringLiteral("out of memory"));
    std::memcpy(copy, image.constData(), size_t(image.size()));
    // SQLite frees the copy, also when this fails.
    check(m_database, sqlite3_deserialize(m_database, "main", copy, image.size(), image.size(),
                                          SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY));
}

void SqliteDatabase::run(const char *sql) {
    check(m_database, sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr));
}

qint64 SqliteDatabase::integer(const char *sql) {
    SqliteStatement statement(m_database, sql);
    return statement.step() ? statement.integer(0) : 0;
}

QString SqliteDatabase::text(const char *sql) {
    SqliteStatement statement(m_database, sql);
    return statement.step() ? statement.text(0) : QString();
}

QByteArray SqliteDatabase::image() const {
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(sqlite3_serialize(m_database, "main", &size, 0),
                                                                        &sqlite3_free);
    if (!bytes || size <= readVersionOffset)
        throw SqliteError(SQLITE_NOMEM, QStringLiteral("the database could not be read"));
    QByteArray result(reinterpret_cast<const char *>(bytes.get()), qsizetype(size));
    // Without a write-ahead log beside it, the image must not announce one.
    result[writeVersionOffset] = 1;
    result[readVersionOffset] = 1;
    return result;
}

QString SqliteDatabase::reason(sqlite3 *database, int code) {
    // The system's own words where a call of it failed; SQLite forgets the number of a full disk.
    const int kind = code & 0xff;
    if (kind == SQLITE_FULL)
        return qt_error_string(ENOSPC);
    const int error = database ? sqlite3_system_errno(database) : 0;
    if (error != 0 && (kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN))
        return qt_error_string(error);
    return QString::fromUtf8(database ? sqlite3_errmsg(database) : sqlite3_errstr(code));
}

} // namespace ludarium
