#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <optional>

namespace ludarium {

/// Limits for JSON that comes from outside: a deeper document exhausts the stack of recursive readers and writers.
namespace JsonLimit {
inline constexpr qsizetype bytes = 16 << 20;
inline constexpr int levels = 64;
} // namespace JsonLimit

/// A JSON object or array, or none when `bytes` is no such thing or exceeds a limit; then `problem` says why.
std::optional<QJsonDocument> parseJson(const QByteArray &bytes, QString *problem = nullptr);

} // namespace ludarium
