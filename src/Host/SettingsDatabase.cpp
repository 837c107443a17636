#include "Host/SettingsDatabase.h"

#include "Host/SettingsStore.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>
#include <QUrl>
#include <cmath>
#include <limits>

namespace ludarium {

namespace {

constexpr qint64 schemaVersion = 1;

/// How long a write waits for the one of another process.
constexpr int busyTimeout = 5000;

/// Numbers of the file format.
enum class Type { Absent = 0, Text = 1, Integer = 2, Real = 3, Flag = 4, Date = 5, Data = 6, TextList = 7, Map = 8 };

[[noreturn]] void failAsDamaged(const char *what) {
    throw SqliteError(SQLITE_CORRUPT, QString::fromLatin1(what));
}

Type typeOf(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return Type::Absent;
    case QMetaType::QString:
        return Type::Text;
    case QMetaType::LongLong:
        return Type::Integer;
    case QMetaType::Double:
        return Type::Real;
    case QMetaType::Bool:
        return Type::Flag;
    case QMetaType::QDateTime:
        return Type::Date;
    case QMetaType::QByteArray:
        return Type::Data;
    case QMetaType::QStringList:
        return Type::TextList;
    case QMetaType::QVariantMap:
        return Type::Map;
    default:
        throw SettingsError(std::string("Values of the type ") + value.typeName() + " cannot be kept");
    }
}

/// "{milliseconds since 1970} {zone}"; the zone is "local", "UTC", "+{seconds}" or a name. Empty for no date.
QString dateText(const QDateTime &date) {
    if (!date.isValid())
        return QLatin1String("");
    QString zone;
    switch (date.timeSpec()) {
    case Qt::LocalTime:
        zone = QStringLiteral("local");
        break;
    case Qt::UTC:
        zone = QStringLiteral("UTC");
        break;
    case Qt::OffsetFromUTC:
        zone = QStringLiteral("+%1").arg(date.offsetFromUtc());
        break;
    case Qt::TimeZone:
        zone = QString::fromUtf8(date.timeZone().id());
        break;
    }
    return QString::number(date.toMSecsSinceEpoch()) + QLatin1Char(' ') + zone;
}

QDateTime dateFromText(const QString &text) {
    if (text.isEmpty())
        return {};
    const qsizetype blank = text.indexOf(QLatin1Char(' '));
    bool valid = false;
    const qint64 milliseconds = QStringView(text).first(qMax(blank, 0)).toLongLong(&valid);
    if (!valid)
        failAsDamaged("a date cannot be read");
    const QString zone = text.sliced(blank + 1);
    if (zone == QLatin1String("local"))
        return QDateTime::fromMSecsSinceEpoch(milliseconds);
    if (zone == QLatin1String("UTC"))
        return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    if (zone.startsWith(QLatin1Char('+')))
        return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::OffsetFromUTC, QStringView(zone).sliced(1).toInt());
    const QTimeZone named(zone.toUtf8());
    // A zone that this machine does not know keeps its instant.
    return named.isValid() ? QDateTime::fromMSecsSinceEpoch(milliseconds, named)
                           : QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}

void bindValue(SqliteStatement &statement, int typeIndex, int valueIndex, const QVariant &value) {
    const Type type = typeOf(value);
    statement.bind(typeIndex, qint64(type));
    switch (type) {
    case Type::Absent:
    case Type::Map:
        return statement.bindNull(valueIndex);
    case Type::Text: {
        const QString text = value.toString();
        return text.isNull() ? statement.bindNull(valueIndex) : statement.bind(valueIndex, text);
    }
    case Type::Integer:
        return statement.bind(valueIndex, value.toLongLong());
    case Type::Real: // SQLite keeps "not a number" as NULL
        return statement.bind(valueIndex, value.toDouble());
    case Type::Flag:
        return statement.bind(valueIndex, qint64(value.toBool()));
    case Type::Date:
        return statement.bind(valueIndex, dateText(value.toDateTime()));
    case Type::Data:
        return statement.bindData(valueIndex, value.toByteArray());
    case Type::TextList:
        return statement.bindData(
            valueIndex, QJsonDocument(QJsonArray::fromStringList(value.toStringList())).toJson(QJsonDocument::Compact));
    }
}

QVariant readValue(const SqliteStatement &row, int typeColumn, int valueColumn) {
    const auto need = [&](int expected) {
        if (row.columnType(valueColumn) != expected)
            failAsDamaged("a value has another form than its type");
    };
    const bool null = row.columnType(valueColumn) == SQLITE_NULL;
    switch (Type(row.integer(typeColumn))) {
    case Type::Absent:
        return {};
    case Type::Text:
        if (null)
            return QString();
        need(SQLITE_TEXT);
        return row.text(valueColumn);
    case Type::Integer:
        need(SQLITE_INTEGER);
        return row.integer(valueColumn);
    case Type::Real:
        if (null)
            return std::numeric_limits<double>::quiet_NaN();
        need(SQLITE_FLOAT);
        return row.real(valueColumn);
    case Type::Flag:
        need(SQLITE_INTEGER);
        return row.integer(valueColumn) != 0;
    case Type::Date:
        need(SQLITE_TEXT);
        return dateFromText(row.text(valueColumn));
    case Type::Data:
        need(SQLITE_BLOB);
        return row.data(valueColumn);
    case Type::TextList: {
        need(SQLITE_BLOB);
        const QJsonDocument list = QJsonDocument::fromJson(row.data(valueColumn));
        if (!list.isArray())
            failAsDamaged("a list cannot be read");
        QStringList texts;
        for (const auto element : list.array())
            texts.append(element.toString());
        return texts;
    }
    case Type::Map:
        return QVariantMap();
    }
    failAsDamaged("a value is of an unknown type");
}

} // namespace

std::unique_ptr<SettingsDatabase> SettingsDatabase::open(const QString &file) {
    auto database = std::make_unique<SqliteDatabase>(QFile::encodeName(file), SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(database->handle(), busyTimeout);
    const QString mode = database->text("PRAGMA journal_mode=WAL");
    if (mode != QLatin1String("wal"))
        throw SqliteError(SQLITE_READONLY, QStringLiteral("a write-ahead log cannot be used here"));
    // FULL flushes the log at every commit: what was written survives a loss of power.
    database->run("PRAGMA synchronous=FULL; PRAGMA wal_autocheckpoint=64;");
    const auto version = [&] { return database->integer("PRAGMA user_version"); };
    if (version() == 0) {
        database->run("BEGIN IMMEDIATE");
        if (version() == 0)
            database->run("CREATE TABLE value(key TEXT PRIMARY KEY NOT NULL, revision INTEGER NOT NULL,"
                          "                   type INTEGER NOT NULL, value) WITHOUT ROWID;"
                          "CREATE TABLE entry(key TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, value,"
                          "                   PRIMARY KEY(key, name)) WITHOUT ROWID;"
                          "PRAGMA user_version=1;");
        database->run("COMMIT");
        // On a disk that fills up later, the file has its pages and the log can be folded into them.
        database->run("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(std::move(database)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::openReadOnly(const QString &file) {
    QUrl uri = QUrl::fromLocalFile(file);
    uri.setQuery(QStringLiteral("immutable=1"));
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(
        std::make_unique<SqliteDatabase>(uri.toEncoded(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI)));
}

std::unique_ptr<SettingsDatabase> SettingsDatabase::fromImage(const QByteArray &image) {
    return std::unique_ptr<SettingsDatabase>(new SettingsDatabase(std::make_unique<SqliteDatabase>(image)));
}

SettingsDatabase::SettingsDatabase(std::unique_ptr<SqliteDatabase> database) : m_database(std::move(database)) {
    const qint64 version = m_database->integer("PRAGMA user_version");
    if (version > schemaVersion)
        throw SqliteError(SQLITE_MISMATCH, QStringLiteral("it was made by a newer version of the program"));
    if (version < schemaVersion)
        failAsDamaged("it has no settings");
    const auto prepare = [this](const char *sql) {
        try {
            return std::make_unique<SqliteStatement>(m_database->handle(), sql);
        } catch (const SqliteError &error) {
            if (error.code == SQLITE_ERROR) // a table is missing
                failAsDamaged(error.what());
            throw;
        }
    };
    m_begin = prepare("BEGIN IMMEDIATE");
    m_commit = prepare("COMMIT");
    m_dataVersion = prepare("PRAGMA data_version");
    m_changes = prepare("SELECT key, revision, type, value FROM value WHERE revision > ?");
    m_entries = prepare("SELECT name, type, value FROM entry WHERE key = ? ORDER BY name");
    m_writeKey = prepare("INSERT OR REPLACE INTO value(key, revision, type, value) VALUES(?, ?, ?, ?)");
    m_writeEntry = prepare("INSERT OR REPLACE INTO entry(key, name, type, value) VALUES(?, ?, ?, ?)");
    m_removeEntry = prepare("DELETE FROM entry WHERE key = ? AND name = ?");
    m_removeEntries = prepare("DELETE FROM entry WHERE key = ?");
}

QVariant SettingsDatabase::normalised(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::UShort:
        return value.toLongLong();
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            const QVariant entry = normalised(it.value());
            if (const Type type = typeOf(entry); type == Type::Map || type == Type::Absent)
                throw SettingsError("A map cannot hold a map or an absent value");
            if (entry.typeId() != it.value().typeId())
                map[it.key()] = entry;
        }
        return map;
    }
    default:
        typeOf(value); // throws for what cannot be kept
        return value;
    }
}

bool SettingsDatabase::isSame(const QVariant &left, const QVariant &right) {
    if (left.typeId() != right.typeId())
        return false;
    switch (left.typeId()) {
    case QMetaType::QDateTime:
        return dateText(left.toDateTime()) == dateText(right.toDateTime());
    case QMetaType::QString:
        return left.toString() == right.toString() && left.toString().isNull() == right.toString().isNull();
    case QMetaType::Double: // exactly; QVariant compares reals loosely
        return std::memcmp(left.constData(), right.constData(), sizeof(double)) == 0;
    case QMetaType::QVariantMap: {
        const QVariantMap one = left.toMap();
        const QVariantMap other = right.toMap();
        return std::equal(
            one.constKeyValueBegin(), one.constKeyValueEnd(), other.constKeyValueBegin(), other.constKeyValueEnd(),
            [](const auto &a, const auto &b) { return a.first == b.first && isSame(a.second, b.second); });
    }
    default:
        return left == right;
    }
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
            const QString key = m_changes->text(0);
            newest = qMax(newest, m_changes->integer(1));
            QVariant value = readValue(*m_changes, 2, 3);
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
        const QVariant value = readValue(*m_entries, 1, 2);
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
    bindValue(*m_writeKey, 3, 4, value);
    m_writeKey->run();
}

void SettingsDatabase::writeEntry(const QString &key, const QString &entry, const QVariant &value) {
    SqliteStatement &statement = value.isValid() ? *m_writeEntry : *m_removeEntry;
    statement.bind(1, key);
    statement.bind(2, entry);
    if (value.isValid())
        bindValue(statement, 3, 4, value);
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
