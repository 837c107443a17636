#pragma once

#include "Host/SqliteDatabase.h"

#include <QHash>
#include <QVariant>

namespace ludarium {

/// The tables of a settings store. A key is a row of `value`; a map keeps each of its entries as a row of `entry`.
/// Every change of a key gives its row a new `revision`, greater than any before, so that other processes can load
/// just what has changed; a removed key leaves a row of the type Absent for that. Every row has a checksum of its own,
/// as a database cannot tell a byte that the disk changed from one that was written.
class SettingsDatabase {
  public:
    /// Opens the file for reading and writing; makes the tables in an empty one.
    static std::unique_ptr<SettingsDatabase> open(const QString &file);
    /// Reads a file that nobody writes, without making any file beside it.
    static std::unique_ptr<SettingsDatabase> openReadOnly(const QString &file);
    /// Opens a damaged file as it stands.
    static std::unique_ptr<SettingsDatabase> openToRepair(const QString &file);
    /// Reads the bytes of a file.
    static std::unique_ptr<SettingsDatabase> fromImage(const QByteArray &image);

    using Changes = QHash<QString, QVariant>; ///< an invalid value: the key is absent
    /// What changed after `revision`, which moves on; everything for 0. What makes no sense throws SQLITE_CORRUPT.
    Changes changesSince(qint64 &revision);
    /// Differs from its last value when another connection has changed the file.
    qint64 dataVersion();

    /// What can still be read of a damaged file.
    struct Salvage {
        Changes values;       ///< of every key that can be read; invalid for one that is marked as absent
        qint64 revision = 0;  ///< the greatest of them
        int damaged = 0;      ///< values and entries that are there and not as they were written
        bool isWhole = false; ///< every row could be looked at: what is not there was not there
    };
    Salvage salvage();
    /// Whether the pages of the file hang together; a file whose list of free pages does not can be read but not
    /// written.
    bool isSound();
    /// False for a file of an older version, which is replaced as a whole.
    bool hasSums() const { return m_hasSums; }
    /// Replaces everything that the file holds by `values`, all of them changed at `revision`; through the pages
    /// themselves, in one commit that other processes see like any other.
    void replaceAll(const Changes &values, qint64 revision);
    /// The same by ordinary writes in the transaction that is open.
    void rewrite(const Changes &values, qint64 revision);

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
    static std::unique_ptr<SettingsDatabase> inMemory();
    explicit SettingsDatabase(std::unique_ptr<SqliteDatabase> database);
    QVariantMap readEntries(const QString &key);

    std::unique_ptr<SqliteDatabase> m_database;
    bool m_hasSums = false;
    std::unique_ptr<SqliteStatement> m_begin, m_commit, m_dataVersion, m_changes, m_entries, m_writeKey, m_writeEntry,
        m_removeEntry, m_removeEntries;
};

} // namespace ludarium
