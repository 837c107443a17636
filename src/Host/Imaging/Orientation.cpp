#include "Host/Imaging/ImageFormats.h"

#include <QtEndian>
#include <cstring>

namespace ludarium::imaging {

int exifOrientation(const uchar *bytes, size_t count) {
    constexpr size_t entrySize = 12;
    constexpr unsigned orientationTag = 0x0112;
    if (count < 8 || (std::memcmp(bytes, "II*\0", 4) != 0 && std::memcmp(bytes, "MM\0*", 4) != 0))
        return 1;
    const bool little = bytes[0] == 'I';
    const auto two = [&](size_t at) {
        return little ? unsigned(bytes[at] | bytes[at + 1] << 8) : unsigned(bytes[at] << 8 | bytes[at + 1]);
    };
    const size_t directory = little ? size_t(two(6)) << 16 | two(4) : size_t(two(4)) << 16 | two(6);
    if (directory > count - 2)
        return 1;
    const unsigned entries = two(directory);
    for (size_t at = directory + 2, i = 0; i < entries && at + entrySize <= count; ++i, at += entrySize)
        if (two(at) == orientationTag) {
            const unsigned value = two(at + 8);
            return value >= 1 && value <= 8 ? int(value) : 1;
        }
    return 1;
}

int chunkOrientation(const QByteArray &file) {
    // PNG: after 8 bytes, the length with its highest byte first, a name, the bytes and a sum. WebP: after 12 bytes, a
    // name, the length with its lowest byte first, and the bytes, filled up to an even number.
    const bool png = file.startsWith("\x89PNG");
    const auto *bytes = reinterpret_cast<const uchar *>(file.constData());
    const auto size = size_t(file.size());
    constexpr size_t head = 8;
    constexpr size_t sum = 4;
    for (size_t at = png ? 8 : 12; at + head <= size;) {
        const uchar *length = bytes + at + (png ? 0 : 4);
        const uchar *name = bytes + at + (png ? 4 : 0);
        const size_t count = png ? qFromBigEndian<quint32>(length) : qFromLittleEndian<quint32>(length);
        if (count > size - at - head)
            return 1;
        if (std::memcmp(name, png ? "eXIf" : "EXIF", 4) == 0) {
            // Some programs write the mark of a JPEG file before it.
            const size_t mark = count >= 6 && std::memcmp(bytes + at + head, "Exif\0\0", 6) == 0 ? 6 : 0;
            return exifOrientation(bytes + at + head + mark, count - mark);
        }
        at += head + count + (png ? sum : count % 2);
    }
    return 1;
}

Bitmap upright(const Bitmap &image, int orientation) {
    if (orientation == 1 || image.isNull())
        return image;
    // 2 mirrored, 3 both, 4 upside down; 5 to 8 the same of the picture with rows and columns exchanged.
    const bool exchanged = orientation >= 5;
    const bool mirrored = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool flipped = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    Bitmap result =
        exchanged ? Bitmap::uninitialized(image.height, image.width) : Bitmap::uninitialized(image.width, image.height);
    result.opaque = image.opaque;
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x) {
            const int u = mirrored ? result.width - 1 - x : x;
            const int v = flipped ? result.height - 1 - y : y;
            const uchar *from = exchanged ? image.row(u) + v * 4 : image.row(v) + u * 4;
            std::memcpy(result.row(y) + x * 4, from, 4);
        }
    return result;
}

} // namespace ludarium::imaging
