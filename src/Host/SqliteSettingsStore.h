#pragma once

#include "Host/SettingsStore.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QSet>
#include <memory>

namespace ludarium {

class SettingsDatabase;

/// The settings in a SQLite file, `settings.sqlite`, with all values in memory for reading. Several processes may use
/// the file at once: what another one has written is noticed at the next read, and by `changed` when the event loop
/// runs.
///
/// A damaged file is set aside and the newest readable of three kept generations takes its place; a generation is
/// kept each time the store is opened with changes. Where the file cannot be written, its values can still be read,
/// and each write fails with SettingsError.
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

  private:
    // --- opening
    void open();
    bool lock(bool alone);
    void openFile(bool alone);
    /// Sets a damaged file aside and puts the newest readable generation, or an empty store, in its place.
    void restore(const QString &damage);
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
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();
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
    int m_lock = -1;
    std::unique_ptr<SettingsDatabase> m_database;
    std::unique_ptr<QFileSystemWatcher> m_watcher;

    QHash<QString, QVariant> m_values;
    qint64 m_revision = 0;
    qint64 m_dataVersion = 0;

    int m_depth = 0;
    QHash<QString, Dirty> m_dirty;
    QStringList m_dirtyOrder;
    QList<Undo> m_undo;
};

} // namespace ludarium
