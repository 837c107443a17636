#pragma once

#include "Host/Setting.h"

#include <QObject>
#include <functional>
#include <stdexcept>

namespace ludarium {

/// The store could not keep a write; what was stored before is intact. `what()` tells why, in UTF-8.
class SettingsError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The per-user settings: values under text keys. A value is a text, integer, real, flag, date, data, list of texts,
/// or a map of text to one of these. Maps are kept entry by entry, so that one entry of a large map is written alone.
///
/// Every write is durable when the call returns and throws SettingsError when the store cannot keep it. Reads never
/// throw: an absent key, or one of another type, is "no value". All calls belong to the main thread.
class SettingsStore : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

    /// The raw value, invalid when absent. A map comes as QVariantMap.
    virtual QVariant rawValue(const QString &key) const = 0;
    virtual void setRawValue(const QString &key, const QVariant &value) = 0;
    virtual void remove(const QString &key) = 0;
    virtual QStringList keys() const = 0;
    /// One entry of a map, without the rest of it; invalid when there is none.
    virtual QVariant rawEntry(const QString &key, const QString &entry) const = 0;
    /// One entry of a map, written alone. An invalid value removes the entry.
    virtual void setRawEntry(const QString &key, const QString &entry, const QVariant &value) = 0;

    /// Runs `changes` as one transaction: all of its writes are kept or none. What it reads is what the store holds
    /// at that moment, with what other processes have written, and nobody else writes until it is done: what depends
    /// on the value before (a count, a list) is read, changed and written inside of one.
    virtual void transaction(const std::function<void()> &changes) = 0;

    /// Moves a value that cannot be understood to "{key}.corrupt-{time}", so that the next write does not destroy what
    /// a person may want back. An absent key is left alone; a store that cannot keep the move is logged.
    void setAside(const QString &key);

    template<typename T>
    T value(const Setting<T> &setting) const {
        return storedValue(setting).value_or(setting.defaultValue());
    }
    /// The stored value, or none when the key is absent or of another type.
    template<typename T>
    std::optional<T> storedValue(const Setting<T> &setting) const;
    template<typename T>
    void setValue(const Setting<T> &setting, const T &value);
    template<typename T>
    void remove(const Setting<T> &setting) {
        remove(QString::fromUtf8(setting.key));
    }
    template<typename T>
    bool contains(const Setting<T> &setting) const {
        return rawValue(QString::fromUtf8(setting.key)).isValid();
    }
    /// The stored entry of a map, or none when it is absent or of another type.
    template<typename V>
    std::optional<V> entry(const Setting<QMap<QString, V>> &setting, const QString &entry) const;
    template<typename V>
    void setEntry(const Setting<QMap<QString, V>> &setting, const QString &entry, const V &value) {
        setRawEntry(QString::fromUtf8(setting.key), entry, QVariant::fromValue(value));
    }
    template<typename V>
    void removeEntry(const Setting<QMap<QString, V>> &setting, const QString &entry) {
        setRawEntry(QString::fromUtf8(setting.key), entry, QVariant());
    }

  Q_SIGNALS:
    /// A key has a new value, written here or by another process.
    void changed(const QString &key);
};

namespace detail {
template<typename T>
struct IsMap : std::false_type {};
template<typename V>
struct IsMap<QMap<QString, V>> : std::true_type {
    using Mapped = V;
};
/// Whether `value` holds a `T`, without the conversions of QVariant that would turn a text into a number.
/// Integers serve as reals.
template<typename T>
bool holds(const QVariant &value) {
    const int type = value.typeId();
    if constexpr (std::is_same_v<T, qint64>)
        return type == QMetaType::LongLong || type == QMetaType::Int;
    else if constexpr (std::is_same_v<T, double>)
        return type == QMetaType::Double || type == QMetaType::LongLong || type == QMetaType::Int;
    else
        return type == qMetaTypeId<T>();
}
} // namespace detail

template<typename T>
std::optional<T> SettingsStore::storedValue(const Setting<T> &setting) const {
    const QVariant raw = rawValue(QString::fromUtf8(setting.key));
    if constexpr (detail::IsMap<T>::value) {
        using V = typename detail::IsMap<T>::Mapped;
        if (raw.typeId() != QMetaType::QVariantMap)
            return std::nullopt;
        T result;
        const QVariantMap map = raw.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            if (detail::holds<V>(it.value()))
                result.insert(result.cend(), it.key(), it.value().template value<V>());
        return result;
    } else {
        if (!raw.isValid() || !detail::holds<T>(raw))
            return std::nullopt;
        return raw.value<T>();
    }
}

template<typename V>
std::optional<V> SettingsStore::entry(const Setting<QMap<QString, V>> &setting, const QString &entry) const {
    const QVariant raw = rawEntry(QString::fromUtf8(setting.key), entry);
    return detail::holds<V>(raw) ? std::optional(raw.value<V>()) : std::nullopt;
}

template<typename T>
void SettingsStore::setValue(const Setting<T> &setting, const T &value) {
    const QString key = QString::fromUtf8(setting.key);
    if constexpr (detail::IsMap<T>::value) {
        QVariantMap map;
        for (auto it = value.cbegin(); it != value.cend(); ++it)
            map.insert(map.cend(), it.key(), QVariant::fromValue(it.value()));
        setRawValue(key, map);
    } else {
        setRawValue(key, QVariant::fromValue(value));
    }
}

} // namespace ludarium
