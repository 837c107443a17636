#pragma once

#include "Host/Imaging/Bitmap.h"
#include "Host/Imaging/ImageError.h"

#include <QString>
#include <stop_token>

namespace ludarium {

/// Pictures larger than this are refused before anything is allocated: 256 MiB decoded.
inline constexpr qint64 mostImagePixels = 67'108'864;
/// Files larger than this are not read.
inline constexpr qint64 mostImageBytes = 134'217'728;

class MemoryBudget;

/// What all pictures that are being decoded, on whatever thread, may take together beside the files themselves. It
/// holds the largest picture once.
MemoryBudget &decodingBudget();

/// Decodes the (first) picture of a PNG, JPEG, GIF or WebP file, told apart by content and never by name, turned
/// upright as its EXIF data says, within the budget of all threads. With `longestSide` the picture is made smaller,
/// never larger, so that its longer side has that many pixels; JPEG and WebP then decode at a smaller size already,
/// where that does not show. Null when `stop` was requested. Throws ImageError. Reads files: not for the main thread.
Bitmap decodeImageFile(const QString &path, int longestSide = 0, const std::stop_token &stop = {});
Bitmap decodeImage(const QByteArray &data, int longestSide = 0, const std::stop_token &stop = {});

/// A JPEG file of the picture; what is transparent comes out on black. Throws ImageError.
QByteArray encodeJpeg(const Bitmap &image, int quality);

/// The picture at exactly this size.
Bitmap scaled(const Bitmap &image, int width, int height);

} // namespace ludarium
