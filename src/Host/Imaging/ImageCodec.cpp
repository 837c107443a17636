#include "Host/Imaging/ImageCodec.h"

#include "Host/Imaging/ImageFormats.h"
#include "Host/Imaging/MemoryBudget.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ludarium {

namespace {

constexpr qsizetype readPiece = 262'144;
/// Of a pixel: what it is decoded to, and the copy that is scaled or turned, or what a progressive JPEG keeps of it.
constexpr qint64 decodingBytes = 8;

[[noreturn]] void throwUnreadable(int error) {
    throw ImageError(ImageError::Case::unreadable, std::strerror(error));
}

struct Descriptor {
    int number;
    ~Descriptor() {
        if (number >= 0)
            ::close(number);
    }
};

/// Null when stopped. Not mapped into memory: a volume that goes away would then end the program.
QByteArray readFile(const QString &path, const std::stop_token &stop) {
    // Without O_NONBLOCK a named pipe called like a picture would hold the thread for ever; and devices may act when
    // they are opened, so a link to one is not.
    const QByteArray name = QFile::encodeName(path);
    struct stat status {};
    if (::stat(name.constData(), &status) != 0)
        throwUnreadable(errno);
    if (!S_ISREG(status.st_mode))
        throw ImageError(ImageError::Case::broken, "not a file");
    const Descriptor file{::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (file.number < 0)
        throwUnreadable(errno);
    if (::fstat(file.number, &status) != 0)
        throwUnreadable(errno);
    if (!S_ISREG(status.st_mode))
        throw ImageError(ImageError::Case::broken, "not a file");
    if (status.st_size > mostImageBytes)
        throw ImageError(ImageError::Case::tooLarge, "the file is too large");
    if (status.st_size == 0)
        throw ImageError(ImageError::Case::broken, "the file is empty");
    QByteArray data(status.st_size, Qt::Uninitialized);
    qsizetype done = 0;
    while (done < data.size()) {
        if (stop.stop_requested())
            return {};
        const ssize_t got = ::read(file.number, data.data() + done, size_t(std::min(readPiece, data.size() - done)));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throwUnreadable(errno);
        if (got == 0)
            break; // became shorter; the decoder tells
        done += got;
    }
    data.truncate(done);
    return data;
}

} // namespace

namespace imaging {

void checkSize(qint64 width, qint64 height) {
    if (width <= 0 || height <= 0)
        throw ImageError(ImageError::Case::broken, "the picture has no pixels");
    if (width > mostImagePixels / height)
        throw ImageError(ImageError::Case::tooLarge, "the picture has too many pixels");
}

QSize fitted(int width, int height, int longestSide) {
    const int longest = std::max(width, height);
    if (longestSide <= 0 || longest <= longestSide)
        return {width, height};
    const auto side = [&](int length) { return std::max(1, int(std::lround(double(length) * longestSide / longest))); };
    return {side(width), side(height)};
}

void premultiply(Bitmap &image) {
    image.opaque = true;
    auto *pixel = reinterpret_cast<uchar *>(image.pixels.data());
    for (const uchar *const end = pixel + image.pixels.size(); pixel != end; pixel += 4) {
        const unsigned alpha = pixel[3];
        if (alpha == 255)
            continue;
        image.opaque = false;
        for (int i = 0; i < 3; ++i)
            pixel[i] = uchar((pixel[i] * alpha + 127) / 255);
    }
}

} // namespace imaging

MemoryBudget &decodingBudget() {
    static MemoryBudget budget(mostImagePixels * decodingBytes);
    return budget;
}

Bitmap decodeImage(const QByteArray &data, int longestSide, const std::stop_token &stop) {
    MemoryBudget::Share share(decodingBudget(), stop);
    const auto claim = [&](qint64 width, qint64 height) { return share.claim(width * height * decodingBytes); };
    Bitmap image;
    int orientation = 1; // of a JPEG file, its decoder has taken care
    if (data.startsWith("\xff\xd8")) {
        image = imaging::decodeJpeg(data, longestSide, claim, stop);
    } else if (data.startsWith("\x89PNG")) {
        image = imaging::decodePng(data, claim);
        orientation = imaging::chunkOrientation(data);
    } else if (data.startsWith("GIF8")) {
        image = imaging::decodeGif(data, claim);
    } else if (data.startsWith("RIFF") && data.mid(8, 4) == "WEBP") {
        image = imaging::decodeWebp(data, longestSide, claim);
        orientation = imaging::chunkOrientation(data);
    } else {
        throw ImageError(ImageError::Case::broken, "not a picture of a known format");
    }
    if (image.isNull() || stop.stop_requested())
        return {};
    const QSize size = imaging::fitted(image.width, image.height, longestSide);
    // Turning is cheaper on the smaller picture.
    return imaging::upright(scaled(image, size.width(), size.height()), orientation);
}

Bitmap decodeImageFile(const QString &path, int longestSide, const std::stop_token &stop) {
    const QByteArray data = readFile(path, stop);
    return stop.stop_requested() ? Bitmap() : decodeImage(data, longestSide, stop);
}

} // namespace ludarium
