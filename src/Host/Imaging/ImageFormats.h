#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QByteArray>
#include <QSize>
#include <functional>
#include <stop_token>

/// One function a format, each throwing ImageError; what they give may be larger than wanted, and is upright.
namespace ludarium::imaging {

/// Throws ImageError::tooLarge or, for a side of zero, broken.
void checkSize(qint64 width, qint64 height);
/// The size with its longer side made `longestSide`; as it is when that is 0 or not smaller.
QSize fitted(int width, int height, int longestSide);
/// Multiplies the colours by their alpha and sets `opaque`.
void premultiply(Bitmap &image);

/// Called with the size of a picture, which was checked, before memory is taken for it. False when the picture is not
/// wanted any more: the decoder then gives none.
using OnSize = std::function<bool(qint64 width, qint64 height)>;

Bitmap decodeJpeg(const QByteArray &data, int longestSide, const OnSize &onSize, const std::stop_token &stop);
Bitmap decodePng(const QByteArray &data, const OnSize &onSize);
Bitmap decodeGif(const QByteArray &data, const OnSize &onSize);
Bitmap decodeWebp(const QByteArray &data, int longestSide, const OnSize &onSize);

/// The orientation, 1 to 8, that the bytes of an EXIF segment give, those after "Exif\0\0"; 1 without one.
int exifOrientation(const uchar *bytes, size_t count);
/// The same of a whole PNG or WebP file, which keeps them in a chunk of its own.
int chunkOrientation(const QByteArray &file);
/// The picture turned and mirrored as the orientation says.
Bitmap upright(const Bitmap &image, int orientation);

} // namespace ludarium::imaging
