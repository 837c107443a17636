#pragma once

#include "Host/SqliteDatabase.h"

#include <QHash>
#include <QVariant>

namespace ludarium {

/// The tables of a settings store. A key is a row of `value`; a map keeps each of its entries as a row of `entry`.
/// Every change of a key gives its row a new `revision`, greater than any before, so that other processes can load
/// just what has changed; a removed key leaves a row of the type Absent for that.
class SettingsDatabase {
  public:
    /// Opens the file for reading and writing; makes the tables in an empty one.
    static std::unique_ptr<SettingsDatabase> open(const QString &file);
    /// Reads a file that nobody writes, without making any file beside it.
    static std::unique_ptr<SettingsDatabase> openReadOnly(const QString &file);
    /// Reads the bytes of a file.
    static std::unique_ptr<SettingsDatabase> fromImage(const QByteArray &image);

    /// A value in the form in which it is kept (integers are qint64, reals double); throws SettingsError when
    /// values of its type cannot be kept.
    static QVariant normalised(const QVariant &value);
    /// Equal in value and type, a date also in its zone.
    static bool isSame(const QVariant &left, const QVariant &right);

    using Changes = QHash<QString, QVariant>; ///< an invalid value: the key is absent
    /// What changed after `revision`, which moves on; everything for 0. What makes no sense throws SQLITE_CORRUPT.
    Changes changesSince(qint64 &revision);
    /// Differs from its last value when another connection has changed the file.
    qint64 dataVersion();

    void begin(); ///< takes the writer's lock
    void commit();
    void rollback() noexcept;
    /// Writes the key's row; an invalid value marks the key as absent. Entries of a map are written on their own.
    void writeKey(const QString &key, qint64 revision, const QVariant &value);
    void writeEntry(const QString &key, const QString &entry, const QVariant &value);
    void removeEntries(const QString &key);
    /// Moves the write-ahead log into the file and empties it.
    void foldLog();
    QByteArray image() const { return m_database->image(); }

  private:
    explicit SettingsDatabase(std::unique_ptr<SqliteDatabase> database);
    QVariantMap readEntries(const QString &key);

    std::unique_ptr<SqliteDatabase> m_database;
    std::unique_ptr<SqliteStatement> m_begin, m_commit, m_dataVersion, m_changes, m_entries, m_writeKey, m_writeEntry,
        m_removeEntry, m_removeEntries;
};

} // namespace ludarium
