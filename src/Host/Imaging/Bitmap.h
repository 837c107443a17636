#pragma once

#include <QByteArray>

namespace ludarium {

/// Decoded pixels without the window system: rows of four bytes blue, green, red, alpha, premultiplied, top row first,
/// no padding. On a little-endian machine that is what Qt calls ARGB32_Premultiplied. Copies share the pixels.
struct Bitmap {
    int width = 0;
    int height = 0;
    bool opaque = true; ///< every alpha is 255
    QByteArray pixels;

    /// Pixels that are not set yet.
    static Bitmap uninitialized(int width, int height) {
        return {width, height, true, QByteArray(qsizetype(width) * height * 4, Qt::Uninitialized)};
    }
    bool isNull() const { return pixels.isEmpty(); }
    qint64 bytes() const { return qint64(width) * height * 4; }
    uchar *row(int y) { return reinterpret_cast<uchar *>(pixels.data()) + qsizetype(y) * width * 4; }
    const uchar *row(int y) const {
        return reinterpret_cast<const uchar *>(pixels.constData()) + qsizetype(y) * width * 4;
    }
};

} // namespace ludarium
