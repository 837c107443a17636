#pragma once

#include <QByteArray>
#include <QString>
#include <sqlite3.h>
#include <stdexcept>

namespace ludarium {

/// What SQLite refused, with its primary result code.
class SqliteError : public std::runtime_error {
  public:
    SqliteError(int code, const QString &text) : std::runtime_error(text.toStdString()), code(code & 0xff) {}
    /// The file's content is at fault, not the disk, the permissions or another process.
    bool isDamage() const { return code == SQLITE_CORRUPT || code == SQLITE_NOTADB; }
    const int code;
};

/// One prepared statement of a SqliteDatabase, which must outlive it.
class SqliteStatement {
  public:
    SqliteStatement(sqlite3 *database, const char *sql);
    ~SqliteStatement() { sqlite3_finalize(m_statement); }
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    /// Indexes count from 1.
    void bind(int index, qint64 value);
    void bind(int index, double value);
    void bind(int index, const QString &text);
    void bindData(int index, const QByteArray &data);
    void bindNull(int index);

    /// True while there is a row; resets itself after the last.
    bool step();
    /// For statements without rows.
    void run();
    void reset();

    /// Columns count from 0.
    int columnType(int column) const { return sqlite3_column_type(m_statement, column); }
    qint64 integer(int column) const { return sqlite3_column_int64(m_statement, column); }
    double real(int column) const { return sqlite3_column_double(m_statement, column); }
    QString text(int column) const;
    QByteArray data(int column) const;

  private:
    [[noreturn]] void fail(int code) const;
    sqlite3_stmt *m_statement = nullptr;
};

/// A SQLite connection. Every call throws SqliteError when SQLite reports one.
class SqliteDatabase {
  public:
    /// `uri` may be a "file:" URI with parameters.
    SqliteDatabase(const QByteArray &uri, int flags);
    /// A database in memory with the bytes of a database file.
    explicit SqliteDatabase(const QByteArray &image);
    ~SqliteDatabase() { sqlite3_close(m_database); }
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;

    sqlite3 *handle() const { return m_database; }
    void run(const char *sql);
    qint64 integer(const char *sql);
    QString text(const char *sql);
    /// The bytes of a database file with the committed content, readable on its own.
    QByteArray image() const;

    static QString reason(sqlite3 *database, int code);

  private:
    sqlite3 *m_database = nullptr;
};

} // namespace ludarium
