#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace ludarium {

/// One key of the settings store with its type and default. `T` is one of bool, qint64, double, QString, QDateTime,
/// QByteArray, QStringList, or QMap of QString to one of QString, qint64, double, QDateTime.
/// The default of a text is a literal, so that descriptors can be constants.
template<typename T>
struct Setting {
    using Default = std::conditional_t<std::is_same_v<T, QString>, const char16_t *,
                                       std::conditional_t<std::is_arithmetic_v<T>, T, std::nullptr_t>>;
    const char *key;
    Default fallback{};

    T defaultValue() const {
        if constexpr (std::is_same_v<T, QString>)
            return fallback ? QString::fromUtf16(fallback) : QString();
        else if constexpr (std::is_arithmetic_v<T>)
            return fallback;
        else
            return T();
    }
};

} // namespace ludarium
