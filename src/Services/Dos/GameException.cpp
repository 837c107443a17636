#include "Services/Dos/GameException.h"

#include "Host/SafeJson.h"

#include <QJsonArray>
#include <QJsonObject>
#include <cmath>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// Reads the fields of one object and remembers when one is missing or of another kind.
class Reader {
  public:
    explicit Reader(const QJsonValue &value) : m_whole(value.isObject()), m_object(value.toObject()) {}
    bool isWhole() const { return m_whole; }

    QString text(QLatin1StringView key) {
        const QJsonValue value = m_object.value(key);
        m_whole = m_whole && value.isString();
        return value.toString();
    }
    QString optionalText(QLatin1StringView key) {
        const QJsonValue value = m_object.value(key);
        return value.isUndefined() || value.isNull() ? QString() : text(key);
    }
    QStringList texts(QLatin1StringView key) {
        const QJsonValue value = m_object.value(key);
        m_whole = m_whole && value.isArray();
        QStringList list;
        for (const QJsonValue &item : value.toArray()) {
            m_whole = m_whole && item.isString();
            list.append(item.toString());
        }
        return list;
    }
    QMap<QString, QString> map(QLatin1StringView key) {
        const QJsonValue value = m_object.value(key);
        m_whole = m_whole && value.isObject();
        QMap<QString, QString> result;
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            m_whole = m_whole && it->isString();
            result.insert(it.key(), it->toString());
        }
        return result;
    }
    QDateTime date(QLatin1StringView key) {
        static const QDateTime epoch(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
        const QJsonValue value = m_object.value(key);
        const double seconds = value.toDouble();
        // Beyond these bounds, ten thousand years, there is no calendar to put it in.
        m_whole = m_whole && value.isDouble() && std::abs(seconds) < 3.2e11;
        return m_whole ? epoch.addMSecs(qint64(seconds * 1000)) : QDateTime();
    }
    template<typename T>
    T oneOf(QLatin1StringView key, std::optional<T> (*fromText)(const QString &), T otherwise) {
        const std::optional<T> value = fromText(text(key));
        m_whole = m_whole && value;
        return value.value_or(otherwise);
    }
    bool isAbsent(QLatin1StringView key) const {
        const QJsonValue value = m_object.value(key);
        return value.isUndefined() || value.isNull();
    }

  private:
    bool m_whole;
    QJsonObject m_object;
};

std::optional<GameException> fromJson(const QJsonValue &value) {
    Reader reader(value);
    GameException exception;
    exception.id = reader.text("id"_L1);
    exception.patterns = reader.texts("patterns"_L1);
    if (!reader.isAbsent("emulator"_L1))
        exception.emulator = reader.oneOf("emulator"_L1, emulatorOverrideFromText, EmulatorOverride::staging);
    exception.preLaunchCommand = reader.optionalText("preLaunchCommand"_L1);
    exception.postLaunchCommand = reader.optionalText("postLaunchCommand"_L1);
    exception.configOverrides = reader.map("configOverrides"_L1);
    exception.notes = reader.text("notes"_L1);
    exception.severity = reader.oneOf("severity"_L1, exceptionSeverityFromText, GameException::Severity::info);
    exception.addedDate = reader.date("addedDate"_L1);
    exception.testedVersion = reader.text("testedVersion"_L1);
    return reader.isWhole() ? std::optional(exception) : std::nullopt;
}

template<typename T, std::size_t count>
std::optional<T> valueOf(const QString &text, const T (&values)[count], QString (*textOf)(T)) {
    for (const T value : values)
        if (textOf(value) == text)
            return value;
    return std::nullopt;
}

} // namespace

QString emulatorOverrideText(EmulatorOverride emulator) {
    switch (emulator) {
    case EmulatorOverride::staging:
        return u"staging"_s;
    case EmulatorOverride::dosboxX:
        return u"dosbox-x"_s;
    case EmulatorOverride::ece:
        return u"ece"_s;
    case EmulatorOverride::scummvm:
        return u"scummvm"_s;
    }
    Q_UNREACHABLE();
}

std::optional<EmulatorOverride> emulatorOverrideFromText(const QString &text) {
    using enum EmulatorOverride;
    return valueOf(text, {staging, dosboxX, ece, scummvm}, emulatorOverrideText);
}

QString exceptionSeverityText(GameException::Severity severity) {
    switch (severity) {
    case GameException::Severity::critical:
        return u"critical"_s;
    case GameException::Severity::recommended:
        return u"recommended"_s;
    case GameException::Severity::optional:
        return u"optional"_s;
    case GameException::Severity::info:
        return u"info"_s;
    }
    Q_UNREACHABLE();
}

std::optional<GameException::Severity> exceptionSeverityFromText(const QString &text) {
    using enum GameException::Severity;
    return valueOf(text, {critical, recommended, optional, info}, exceptionSeverityText);
}

std::optional<QList<GameException>> GameException::listFromJson(const QByteArray &json) {
    const std::optional<QJsonDocument> document = parseJson(json);
    if (!document || !document->isArray())
        return std::nullopt;
    QList<GameException> list;
    for (const QJsonValue &value : document->array()) {
        const std::optional<GameException> exception = fromJson(value);
        if (!exception)
            return std::nullopt;
        list.append(*exception);
    }
    return list;
}

} // namespace ludarium
