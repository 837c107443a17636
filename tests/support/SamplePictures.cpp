#include "support/SamplePictures.h"

#include "Host/Imaging/ImageCodec.h"

#include <cstring>

namespace ludarium::test {

Bitmap quarters(int width, int height) {
    static constexpr uchar colors[4][4]{{0, 0, 255, 255}, {0, 255, 0, 255}, {255, 0, 0, 255}, {255, 255, 255, 255}};
    Bitmap image = Bitmap::uninitialized(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            std::memcpy(image.row(y) + x * 4, colors[(y * 2 >= height ? 2 : 0) + (x * 2 >= width ? 1 : 0)], 4);
    return image;
}

QByteArray jpegOf(int width, int height) {
    return encodeJpeg(quarters(width, height), 90);
}

const char *colorAt(const Bitmap &image, int x, int y) {
    const uchar *pixel = image.row(y) + x * 4;
    if (pixel[3] < 128)
        return "clear";
    static constexpr const char *names[]{"black", "blue", "green", "cyan", "red", "magenta", "yellow", "white"};
    return names[(pixel[0] > 127 ? 1 : 0) | (pixel[1] > 127 ? 2 : 0) | (pixel[2] > 127 ? 4 : 0)];
}

} // namespace ludarium::test
