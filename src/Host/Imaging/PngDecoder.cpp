#include "Host/Imaging/ImageError.h"
#include "Host/Imaging/ImageFormats.h"

#include <png.h>

namespace ludarium::imaging {

Bitmap decodePng(const QByteArray &data, const OnSize &onSize) {
    struct Reader : png_image {
        Reader() : png_image{} { version = PNG_IMAGE_VERSION; }
        ~Reader() { png_image_free(this); }
    } reader;
    if (!png_image_begin_read_from_memory(&reader, data.constData(), size_t(data.size())))
        throw ImageError(ImageError::Case::broken, reader.message);
    checkSize(reader.width, reader.height);
    if (!onSize(reader.width, reader.height))
        return {};
    // Sixteen bits without a word on their meaning are not linear in pictures of games.
    reader.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    const bool hasAlpha = (reader.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    reader.format = PNG_FORMAT_BGRA;
    Bitmap image = Bitmap::uninitialized(int(reader.width), int(reader.height));
    if (!png_image_finish_read(&reader, nullptr, image.pixels.data(), 0, nullptr))
        throw ImageError(ImageError::Case::broken, reader.message);
    if (hasAlpha)
        premultiply(image);
    return image;
}

} // namespace ludarium::imaging
