#pragma once

#include "Host/SettingsStore.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QSet>
#include <QTimer>
#include <memory>

namespace ludarium {

class SettingsDatabase;

/// The settings in a SQLite file, `settings.sqlite`, with all values in memory for reading. Several processes may use
/// the file at once: what another one has written is noticed at the next read, and by `changed` when the event loop
/// runs.
///
/// A damaged file is set aside and rebuilt from what can still be read of it, and for the rest from the newest readable
/// of three kept generations; a generation is kept each time the store is opened with changes. Damage is noticed when
/// the store is opened, by a read and by a write that SQLite refuses for it. Where the file cannot be written, its
/// values can still be read, and each write fails with SettingsError.
class SqliteSettingsStore : public SettingsStore {
    Q_OBJECT
  public:
    explicit SqliteSettingsStore(const QString &folder, QObject *parent = nullptr);
    ~SqliteSettingsStore() override;

    QVariant rawValue(const QString &key) const override;
    void setRawValue(const QString &key, const QVariant &value) override;
    void remove(const QString &key) override;
    QStringList keys() const override;
    QVariant rawEntry(const QString &key, const QString &entry) const override;
    void setRawEntry(const QString &key, const QString &entry, const QVariant &value) override;
    void transaction(const std::function<void()> &changes) override;
    using SettingsStore::remove;

    QString file() const { return m_file; }
    /// Why the store cannot be written, empty when it can.
    QString problem() const { return m_problem; }
    /// What a person should know of how the store was opened: that nothing can be kept, or that it was damaged. Empty
    /// when all is well.
    QString notice() const;
    /// What became of a store that was damaged; empty when none was.
    QString repairNotice() const { return m_repair; }
    /// Why the values are not those that were stored: nothing, or an older copy. Empty when the store could be read.
    QString readProblem() const { return m_readProblem; }

  Q_SIGNALS:
    /// Damage was found after the store was opened, and mended; `repairNotice` tells.
    void repaired();

  private:
    // --- opening
    void open();
    bool lock(bool alone);
    void openFile(bool alone);
    void load();
    /// Sets a copy of a damaged file aside and rebuilds the file in its place, so that other processes go on with it;
    /// false when not even its tables can be found.
    bool repair(const QString &damage);
    /// For a file of which nothing can be read: sets it aside and puts the newest readable generation, or an empty
    /// store, in its place.
    void restore(const QString &damage);
    /// The values of the newest generation that can be read.
    std::optional<QHash<QString, QVariant>> newestGeneration(qint64 &revision) const;
    void readWithoutWriting();
    void keepGeneration();
    void watchOtherProcesses();

    // --- memory and file
    void apply(const QHash<QString, QVariant> &changes, QSet<QString> *changedKeys = nullptr);
    void put(const QString &key, const QVariant &value);
    void putEntry(const QString &key, const QString &entry, const QVariant &value);
    /// Loads what another process has written; returns the keys that have new values.
    QSet<QString> loadForeignChanges();
    void noticeForeignChanges() const;
    /// Tells of new values once the event loop runs.
    void announce(const QSet<QString> &changedKeys);
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();
    void runTransaction(const std::function<void()> &changes);
    void writeDirty();

    /// What a transaction has changed of one key.
    struct Dirty {
        bool removeEntries = false; ///< it was a map and is none any more
        QSet<QString> entries;
    };
    struct Undo {
        QString key;
        std::optional<QString> entry;
        QVariant before;
    };

    const QString m_folder;
    const QString m_file;
    QString m_problem;
    QString m_repair; ///< what became of a damaged store
    QString m_readProblem;
    int m_lock = -1;
    std::unique_ptr<SettingsDatabase> m_database;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QTimer m_look;

    QHash<QString, QVariant> m_values;
    qint64 m_revision = 0;
    qint64 m_dataVersion = 0;

    int m_depth = 0;
    QHash<QString, Dirty> m_dirty;
    QStringList m_dirtyOrder;
    QList<Undo> m_undo;
};

} // namespace ludarium
