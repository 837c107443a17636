#include "Host/AppLogger.h"
#include "Host/FileLock.h"
#include "Host/SafeFiles.h"
#include "Host/SettingsDatabase.h"
#include "Host/SqliteSettingsStore.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// Copies the file and its log to "{path}.corrupt-{time}"; throws when they cannot be kept.
QStringList copyAside(const QString &file) {
    const QString time = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss-zzz"_s);
    QStringList copies;
    for (const QString &part : {file, file + u"-wal"_s}) {
        QFile source(part);
        if (!source.exists())
            continue;
        if (!source.open(QIODevice::ReadOnly))
            throw SqliteError(SQLITE_CANTOPEN, source.errorString());
        const QString copy = u"%1.corrupt-%2"_s.arg(part, time);
        if (const QString problem = writeAtomically(copy, source.readAll(), true); !problem.isEmpty())
            throw SqliteError(SQLITE_CANTOPEN, problem);
        copies.append(copy);
    }
    return copies;
}

QString countText(int values) {
    return values == 1 ? u"1 value"_s : u"%1 values"_s.arg(values);
}

/// Puts what is missing in `values` there from an older copy; the number of values and entries that came from it.
int fillFrom(const QHash<QString, QVariant> &older, QHash<QString, QVariant> &values) {
    int taken = 0;
    for (auto it = older.cbegin(); it != older.cend(); ++it) {
        const auto found = values.find(it.key());
        if (found == values.end()) {
            values.insert(it.key(), *it);
            ++taken;
        } else if (it->typeId() == QMetaType::QVariantMap && found->typeId() == QMetaType::QVariantMap) {
            QVariantMap map = found->toMap();
            const QVariantMap entries = it->toMap();
            for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
                if (!map.contains(entry.key())) {
                    map.insert(entry.key(), *entry);
                    ++taken;
                }
            *found = map;
        }
    }
    return taken;
}

} // namespace

bool SqliteSettingsStore::repair(const QString &damage) {
    Log::error(u"❌ The settings in %1 are damaged: %2"_s.arg(m_file, damage));
    m_database.reset(); // before the file is read: closing a file ends the locks of every connection to it
    const FileLock lock(m_file + u".repair"_s); // one process mends at a time
    const QStringList copies = copyAside(m_file);
    const QHash<QString, QVariant> before = m_values;
    int taken = 0;
    int lost = 0;
    bool mended = true;
    try {
        const auto database = SettingsDatabase::openToRepair(m_file);
        const bool sound = database->hasSums() && database->isSound();
        // Of a file whose pages hang together, other processes may be writing other values meanwhile.
        if (sound)
            database->begin();
        SettingsDatabase::Salvage salvage = database->salvage();
        mended = !sound || !salvage.isWhole; // else another process was faster
        if (mended) {
            qint64 revision = qMax(salvage.revision, m_revision);
            if (!salvage.isWhole) {
                qint64 older = 0;
                if (const auto kept = newestGeneration(older))
                    taken = fillFrom(*kept, salvage.values);
                revision = qMax(revision, older);
                lost = qMax(0, salvage.damaged - taken);
            }
            if (sound) {
                database->rewrite(salvage.values, revision + 1);
                database->commit();
            } else {
                database->replaceAll(salvage.values, revision + 1);
            }
        }
    } catch (const SqliteError &error) {
        for (const QString &copy : copies)
            QFile::remove(copy);
        if (!error.isDamage())
            throw;
        Log::error(u"❌ The settings cannot be mended: %1"_s.arg(QString::fromUtf8(error.what())));
        return false;
    }
    load();
    QSet<QString> changedKeys;
    for (auto it = m_values.cbegin(); it != m_values.cend(); ++it)
        if (before.value(it.key()) != *it)
            changedKeys.insert(it.key());
    for (auto it = before.cbegin(); it != before.cend(); ++it)
        if (!m_values.contains(it.key()))
            changedKeys.insert(it.key());
    announce(changedKeys);
    if (!mended) {
        for (const QString &copy : copies)
            QFile::remove(copy);
        return true;
    }
    m_repair = u"The settings were damaged. What could still be read was kept"_s;
    if (taken > 0)
        m_repair += u"; %1 came from an older copy"_s.arg(countText(taken));
    if (lost > 0)
        m_repair += lost == 1 ? u"; 1 value is lost"_s : u"; %1 values are lost"_s.arg(lost);
    m_repair += u".\n\nThe damaged file was set aside as %1"_s.arg(copies.value(0));
    Log::warning(u"⚠️ %1"_s.arg(singleLine(m_repair)));
    Q_EMIT repaired();
    return true;
}

} // namespace ludarium
