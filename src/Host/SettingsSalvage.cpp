#include "Host/SettingsDatabase.h"
#include "Host/SettingsValues.h"

namespace ludarium {

using namespace Qt::StringLiterals;

namespace {

/// Walks a table from both ends, as far as each way is passable; whether it saw every row. What `take` does twice to a
/// row must do no harm.
template<typename Take>
bool walk(const SqliteDatabase &database, const QByteArray &select, const char *order, const Take &take) {
    for (const char *direction : {" ASC", " DESC"}) {
        const QByteArray columns = QByteArray(order).replace(",", QByteArray(direction) + ',');
        try {
            SqliteStatement rows(database.handle(), (select + " ORDER BY " + columns + direction).constData());
            while (rows.step())
                take(rows);
            return true;
        } catch (const SqliteError &error) {
            if (!error.isDamage())
                throw;
        }
    }
    return false;
}

/// The value of a row that is as it was written; none for another.
std::optional<QVariant> intactValue(const SqliteStatement &row, int typeColumn, int valueColumn, int intactColumn) {
    if (row.columnType(typeColumn) != SQLITE_INTEGER || row.integer(intactColumn) == 0)
        return std::nullopt;
    try {
        return SettingsValues::read(row, typeColumn, valueColumn);
    } catch (const SqliteError &) {
        return std::nullopt;
    }
}

} // namespace

SettingsDatabase::Salvage SettingsDatabase::salvage() {
    const auto intact = [this](const char *columns) {
        return m_hasSums ? QByteArray("sum IS NULL OR sum = row_sum(") + columns + ')' : QByteArray("1");
    };
    Salvage result;
    QSet<QString> damaged;
    const auto takeKey = [&](const SqliteStatement &row) {
        const QString key = row.text(0);
        const std::optional<QVariant> value = intactValue(row, 2, 3, 4);
        if (!value || row.columnType(1) != SQLITE_INTEGER)
            return void(damaged.insert(key));
        result.values.insert(key, *value);
        result.revision = qMax(result.revision, row.integer(1));
    };
    const bool allKeys =
        walk(*m_database, "SELECT key, revision, type, value, " + intact("key, revision, type, value") + " FROM value",
             "key", takeKey);
    const auto takeEntry = [&](const SqliteStatement &row) {
        const QString key = row.text(0);
        const auto map = result.values.find(key);
        const std::optional<QVariant> value = intactValue(row, 2, 3, 4);
        const bool fits = value && value->isValid() && value->typeId() != QMetaType::QVariantMap;
        if (!fits)
            return void(damaged.insert(key + QChar(u'\0') + row.text(1)));
        // The entries of a map whose own row is damaged still tell what it held.
        if (map == result.values.end())
            result.values.insert(key, QVariantMap{{row.text(1), *value}});
        else if (map->typeId() == QMetaType::QVariantMap)
            static_cast<QVariantMap *>(map->data())->insert(row.text(1), *value);
    };
    const bool allEntries =
        walk(*m_database, "SELECT key, name, type, value, " + intact("key, name, type, value") + " FROM entry",
             "key, name", takeEntry);
    result.damaged = int(damaged.size());
    result.isWhole = allKeys && allEntries && damaged.isEmpty();
    return result;
}

bool SettingsDatabase::isSound() {
    try {
        return m_database->text("PRAGMA quick_check(1)") == u"ok"_s;
    } catch (const SqliteError &error) {
        if (!error.isDamage())
            throw;
        return false;
    }
}

void SettingsDatabase::rewrite(const Changes &values, qint64 revision) {
    m_database->run("DELETE FROM entry; DELETE FROM value;");
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        writeKey(it.key(), revision, it.value());
        if (it->typeId() != QMetaType::QVariantMap)
            continue;
        const QVariantMap map = it->toMap();
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
            writeEntry(it.key(), entry.key(), entry.value());
    }
}

void SettingsDatabase::replaceAll(const Changes &values, qint64 revision) {
    const auto fresh = inMemory();
    fresh->begin();
    fresh->rewrite(values, revision);
    fresh->commit();
    for (auto *statement : {&m_begin, &m_commit, &m_dataVersion, &m_changes, &m_entries})
        (*statement)->reset();
    sqlite3 *target = m_database->handle();
    sqlite3_backup *copy = sqlite3_backup_init(target, "main", fresh->m_database->handle(), "main");
    int code = SQLITE_ERROR;
    if (copy) {
        code = sqlite3_backup_step(copy, -1);
        const int ended = sqlite3_backup_finish(copy);
        code = code == SQLITE_DONE ? ended : code;
    }
    if (code != SQLITE_OK)
        throw SqliteError(code, SqliteDatabase::reason(target, code));
}

} // namespace ludarium
