#include "Host/Imaging/ImageError.h"
#include "Host/Imaging/ImageFormats.h"

#include <algorithm>
#include <cstring>
#include <gif_lib.h>
#include <memory>
#include <vector>

namespace ludarium::imaging {

namespace {

struct Input {
    const QByteArray &data;
    qsizetype at = 0;
};

int readBytes(GifFileType *file, GifByteType *bytes, int count) {
    auto &input = *static_cast<Input *>(file->UserData);
    const qsizetype given = std::min<qsizetype>(count, input.data.size() - input.at);
    std::memcpy(bytes, input.data.constData() + input.at, size_t(given));
    input.at += given;
    return int(given);
}

struct CloseGif {
    void operator()(GifFileType *file) const { DGifCloseFile(file, nullptr); }
};

void check(int result, const GifFileType *file) {
    if (result != GIF_ERROR)
        return;
    const char *reason = GifErrorString(file->Error);
    throw ImageError(ImageError::Case::broken, reason ? reason : "a broken GIF file");
}

/// The number of the transparent colour, or NO_TRANSPARENT_COLOR.
int readExtension(GifFileType *file) {
    int transparent = NO_TRANSPARENT_COLOR;
    int code = 0;
    GifByteType *bytes = nullptr;
    check(DGifGetExtension(file, &code, &bytes), file);
    while (bytes) {
        GraphicsControlBlock control;
        if (code == GRAPHICS_EXT_FUNC_CODE && DGifExtensionToGCB(bytes[0], bytes + 1, &control) == GIF_OK)
            transparent = control.TransparentColor;
        check(DGifGetExtensionNext(file, &bytes), file);
    }
    return transparent;
}

Bitmap readPicture(GifFileType *file, int transparent) {
    check(DGifGetImageDesc(file), file);
    const GifImageDesc &frame = file->Image;
    checkSize(frame.Width, frame.Height);
    const ColorMapObject *colors = frame.ColorMap ? frame.ColorMap : file->SColorMap;
    if (!colors)
        throw ImageError(ImageError::Case::broken, "a GIF file without colors");
    Bitmap image = Bitmap::uninitialized(file->SWidth, file->SHeight);
    image.pixels.fill(0);
    image.opaque = transparent == NO_TRANSPARENT_COLOR && frame.Left <= 0 && frame.Top <= 0 &&
                   frame.Left + frame.Width >= image.width && frame.Top + frame.Height >= image.height;
    std::vector<GifPixelType> line(size_t(frame.Width));
    const auto readLine = [&](int y) {
        check(DGifGetLine(file, line.data(), frame.Width), file);
        y += frame.Top;
        if (y < 0 || y >= image.height)
            return;
        for (int x = std::max(0, -frame.Left); x < frame.Width && frame.Left + x < image.width; ++x) {
            const int number = line[size_t(x)];
            if (number == transparent || number >= colors->ColorCount)
                continue;
            const GifColorType &color = colors->Colors[number];
            uchar *pixel = image.row(y) + size_t(frame.Left + x) * 4;
            pixel[0] = color.Blue;
            pixel[1] = color.Green;
            pixel[2] = color.Red;
            pixel[3] = 255;
        }
    };
    if (frame.Interlace) {
        constexpr std::pair<int, int> passes[]{{0, 8}, {4, 8}, {2, 4}, {1, 2}};
        for (const auto &[first, step] : passes)
            for (int y = first; y < frame.Height; y += step)
                readLine(y);
    } else {
        for (int y = 0; y < frame.Height; ++y)
            readLine(y);
    }
    return image;
}

} // namespace

Bitmap decodeGif(const QByteArray &data, const OnSize &onSize) {
    Input input{data};
    int error = 0;
    const std::unique_ptr<GifFileType, CloseGif> file(DGifOpen(&input, readBytes, &error));
    if (!file)
        throw ImageError(ImageError::Case::broken, "a broken GIF file");
    checkSize(file->SWidth, file->SHeight);
    if (!onSize(file->SWidth, file->SHeight))
        return {};
    int transparent = NO_TRANSPARENT_COLOR;
    for (;;) {
        GifRecordType record = UNDEFINED_RECORD_TYPE;
        check(DGifGetRecordType(file.get(), &record), file.get());
        if (record == IMAGE_DESC_RECORD_TYPE)
            return readPicture(file.get(), transparent);
        if (record != EXTENSION_RECORD_TYPE)
            throw ImageError(ImageError::Case::broken, "a GIF file without a picture");
        if (const int found = readExtension(file.get()); found != NO_TRANSPARENT_COLOR)
            transparent = found;
    }
}

} // namespace ludarium::imaging
