#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <cstdint>
#include <cstdlib>

namespace ludarium {

/// Ends the run as a crash does, so that the fuzzer keeps the input.
inline void check(bool condition) {
    if (!condition)
        std::abort();
}

inline QByteArray bytesOf(const uint8_t *data, size_t size) {
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

/// An input as several files, which a line "====" separates.
inline QList<QByteArray> filesOf(const uint8_t *data, size_t size) {
    const QByteArray separator("\n====\n");
    QList<QByteArray> files;
    QByteArray rest = bytesOf(data, size);
    for (qsizetype at = rest.indexOf(separator); at >= 0; at = rest.indexOf(separator)) {
        files.append(rest.first(at));
        rest.remove(0, at + separator.size());
    }
    files.append(rest);
    return files;
}

} // namespace ludarium
