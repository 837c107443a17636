#include "Host/SettingsValues.h"

#include "Host/SettingsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>
#include <cmath>
#include <cstring>
#include <limits>

namespace ludarium::SettingsValues {

namespace {

/// Numbers of the file format.
enum class Type { Absent = 0, Text = 1, Integer = 2, Real = 3, Flag = 4, Date = 5, Data = 6, TextList = 7, Map = 8 };

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

} // namespace

void failAsDamaged(const char *what) {
    throw SqliteError(SQLITE_CORRUPT, QString::fromLatin1(what));
}

void bind(SqliteStatement &statement, int typeIndex, int valueIndex, const QVariant &value) {
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

QVariant read(const SqliteStatement &row, int typeColumn, int valueColumn) {
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

QVariant normalised(const QVariant &value) {
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

bool isSame(const QVariant &left, const QVariant &right) {
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

} // namespace ludarium::SettingsValues
