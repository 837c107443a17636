#include "Host/SqliteSettingsStore.h"

#include "Host/AppLogger.h"
#include "Host/LogRedactor.h"
#include "Host/SettingsDatabase.h"
#include "Host/SettingsValues.h"

#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/stat.h>

namespace ludarium {

namespace {

/// Keys whose values must not reach the log, by their names.
bool isSecret(const QString &key) {
    return key.endsWith(QLatin1String("password"), Qt::CaseInsensitive) ||
           key.endsWith(QLatin1String("apiKey"), Qt::CaseInsensitive);
}

} // namespace

SqliteSettingsStore::SqliteSettingsStore(const QString &folder, QObject *parent)
    : SettingsStore(parent), m_folder(folder), m_file(folder + QStringLiteral("/settings.sqlite")) {
    open();
}

// --- reading -------------------------------------------------------------------------------------------------------

QVariant SqliteSettingsStore::rawValue(const QString &key) const {
    noticeForeignChanges();
    return m_values.value(key);
}

QStringList SqliteSettingsStore::keys() const {
    noticeForeignChanges();
    QStringList keys = m_values.keys();
    keys.sort();
    return keys;
}

QVariant SqliteSettingsStore::rawEntry(const QString &key, const QString &entry) const {
    noticeForeignChanges();
    const auto stored = m_values.constFind(key);
    if (stored == m_values.cend() || stored->typeId() != QMetaType::QVariantMap)
        return {};
    return static_cast<const QVariantMap *>(stored->constData())->value(entry);
}

void SqliteSettingsStore::noticeForeignChanges() const {
    Q_ASSERT(thread() == QThread::currentThread());
    if (!m_database || m_depth > 0)
        return;
    // The values in memory are a cache of the file: loading them anew changes nothing that a caller could see as a
    // change made by reading.
    auto *self = const_cast<SqliteSettingsStore *>(this);
    try {
        try {
            self->announce(self->loadForeignChanges());
        } catch (const SqliteError &error) {
            if (!error.isDamage() || !self->repair(QString::fromUtf8(error.what())))
                throw;
        }
    } catch (const std::exception &error) {
        Log::warning(QStringLiteral("⚠️ Settings of another process could not be read: %1")
                         .arg(QString::fromUtf8(error.what())));
    }
}

void SqliteSettingsStore::announce(const QSet<QString> &changedKeys) {
    if (changedKeys.isEmpty())
        return;
    // Not at once: a reader does not expect its own read to call anybody.
    QMetaObject::invokeMethod(
        this,
        [this, changedKeys] {
            for (const QString &key : changedKeys)
                Q_EMIT changed(key);
        },
        Qt::QueuedConnection);
}

QSet<QString> SqliteSettingsStore::loadForeignChanges() {
    const qint64 version = m_database->dataVersion();
    if (version == m_dataVersion)
        return {};
    QSet<QString> changedKeys;
    apply(m_database->changesSince(m_revision), &changedKeys);
    m_dataVersion = version;
    return changedKeys;
}

void SqliteSettingsStore::apply(const QHash<QString, QVariant> &changes, QSet<QString> *changedKeys) {
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (changedKeys && !SettingsValues::isSame(m_values.value(it.key()), it.value()))
            changedKeys->insert(it.key());
        put(it.key(), it.value());
    }
}

void SqliteSettingsStore::put(const QString &key, const QVariant &value) {
    if (isSecret(key))
        LogRedactor::addSecret(value.toString());
    if (value.isValid())
        m_values.insert(key, value);
    else
        m_values.remove(key);
}

void SqliteSettingsStore::putEntry(const QString &key, const QString &entry, const QVariant &value) {
    QVariant &stored = m_values[key];
    if (stored.typeId() != QMetaType::QVariantMap)
        stored = QVariantMap();
    // In place: taking the map out and putting it back would copy all of it.
    auto *map = static_cast<QVariantMap *>(stored.data());
    if (value.isValid())
        map->insert(entry, value);
    else
        map->remove(entry);
}

// --- writing -------------------------------------------------------------------------------------------------------

void SqliteSettingsStore::setRawValue(const QString &key, const QVariant &value) {
    const QVariant after = SettingsValues::normalised(value);
    transaction([&] {
        const QVariant before = m_values.value(key);
        if (SettingsValues::isSame(before, after))
            return;
        Dirty &dirty = m_dirty[key];
        if (before.typeId() == QMetaType::QVariantMap) {
            const QVariantMap old = before.toMap();
            if (after.typeId() != QMetaType::QVariantMap) {
                dirty.removeEntries = true;
            } else {
                const QVariantMap map = after.toMap();
                for (auto it = old.cbegin(); it != old.cend(); ++it)
                    if (!map.contains(it.key()))
                        dirty.entries.insert(it.key());
            }
        }
        if (after.typeId() == QMetaType::QVariantMap) {
            const QVariantMap old = before.toMap();
            const QVariantMap map = after.toMap();
            for (auto it = map.cbegin(); it != map.cend(); ++it)
                if (!SettingsValues::isSame(old.value(it.key()), it.value()))
                    dirty.entries.insert(it.key());
        }
        m_undo.append({key, std::nullopt, before});
        m_dirtyOrder.append(key);
        put(key, after);
    });
}

void SqliteSettingsStore::remove(const QString &key) {
    setRawValue(key, QVariant());
}

void SqliteSettingsStore::setRawEntry(const QString &key, const QString &entry, const QVariant &value) {
    const QVariant after = SettingsValues::normalised(value);
    if (after.typeId() == QMetaType::QVariantMap)
        throw SettingsError("A map cannot hold a map");
    transaction([&] {
        const auto stored = m_values.constFind(key);
        const bool isMap = stored != m_values.cend() && stored->typeId() == QMetaType::QVariantMap;
        QVariant before;
        if (isMap) {
            // Without a copy of the map, which would make the write below copy all of it.
            before = static_cast<const QVariantMap *>(stored->constData())->value(entry);
            if (SettingsValues::isSame(before, after))
                return;
            m_undo.append({key, entry, before});
        } else {
            m_undo.append({key, std::nullopt, stored == m_values.cend() ? QVariant() : *stored});
        }
        m_dirty[key].entries.insert(entry);
        m_dirtyOrder.append(key);
        putEntry(key, entry, after);
    });
}

void SqliteSettingsStore::transaction(const std::function<void()> &changes) {
    Q_ASSERT(thread() == QThread::currentThread());
    if (m_depth > 0)
        return changes();
    try {
        try {
            runTransaction(changes);
        } catch (const SqliteError &error) {
            // What SQLite refuses for a damaged file it will refuse for ever, while all reads may go well.
            if (!error.isDamage() || !repair(QString::fromUtf8(error.what())))
                throw;
            runTransaction(changes);
        }
    } catch (const SqliteError &error) {
        throw SettingsError(
            QStringLiteral("The settings cannot be saved: %1").arg(QString::fromUtf8(error.what())).toStdString());
    }
}

void SqliteSettingsStore::runTransaction(const std::function<void()> &changes) {
    beginTransaction();
    try {
        changes();
        commitTransaction();
    } catch (...) {
        rollbackTransaction();
        throw;
    }
    m_depth = 0;
    m_dirty.clear();
    m_undo.clear();
    QStringList changedKeys = std::exchange(m_dirtyOrder, {});
    changedKeys.removeDuplicates();
    for (const QString &key : std::as_const(changedKeys))
        Q_EMIT changed(key);
}

void SqliteSettingsStore::beginTransaction() {
    if (!m_database)
        open(); // the disk may be writable again
    if (!m_database)
        throw SettingsError(QStringLiteral("The settings cannot be saved: %1").arg(m_problem).toStdString());
    try {
        m_database->begin();
        // What others wrote comes first, so that the changes are made to the newest values.
        announce(loadForeignChanges());
    } catch (const SqliteError &) {
        m_database->rollback();
        throw;
    }
    m_depth = 1;
}

void SqliteSettingsStore::commitTransaction() {
    try {
        writeDirty();
    } catch (const SqliteError &error) {
        m_database->rollback();
        if (error.code != SQLITE_FULL)
            throw;
        // The log may have grown beside a database that has room: fold it in and try once more. Not when another
        // process has written meanwhile, as these changes were made to the values before.
        m_database->foldLog();
        m_database->begin();
        if (m_database->dataVersion() != m_dataVersion)
            throw;
        writeDirty();
    }
}

void SqliteSettingsStore::writeDirty() {
    if (m_dirty.isEmpty())
        return m_database->rollback();
    const qint64 revision = m_revision + 1;
    for (auto it = m_dirty.cbegin(); it != m_dirty.cend(); ++it) {
        const QVariant value = m_values.value(it.key());
        m_database->writeKey(it.key(), revision, value);
        if (it->removeEntries)
            m_database->removeEntries(it.key());
        if (value.typeId() != QMetaType::QVariantMap)
            continue;
        const auto *map = static_cast<const QVariantMap *>(value.constData());
        // After all entries are gone, all that the map has now are to be written.
        if (it->removeEntries)
            for (auto entry = map->cbegin(); entry != map->cend(); ++entry)
                m_database->writeEntry(it.key(), entry.key(), entry.value());
        else
            for (const QString &entry : it->entries)
                m_database->writeEntry(it.key(), entry, map->value(entry));
    }
    m_database->commit();
    m_revision = revision;
    // Another process's watcher sees the log being written before the commit is visible to it: a touch afterwards
    // makes it look again.
    ::utimensat(AT_FDCWD, QFile::encodeName(m_file + QStringLiteral("-wal")).constData(), nullptr, 0);
}

void SqliteSettingsStore::rollbackTransaction() {
    m_database->rollback();
    while (!m_undo.isEmpty()) {
        const Undo undo = m_undo.takeLast();
        if (undo.entry)
            putEntry(undo.key, *undo.entry, undo.before);
        else
            put(undo.key, undo.before);
    }
    m_dirty.clear();
    m_dirtyOrder.clear();
    m_depth = 0;
}

} // namespace ludarium
