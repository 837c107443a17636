#include "Host/Imaging/ImageError.h"
#include "Host/Imaging/ImageFormats.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <webp/decode.h>
#include <webp/demux.h>

namespace ludarium::imaging {

namespace {

[[noreturn]] void throwBroken() {
    throw ImageError(ImageError::Case::broken, "a broken WebP file");
}

struct DeleteAnimation {
    void operator()(WebPAnimDecoder *decoder) const { WebPAnimDecoderDelete(decoder); }
};

Bitmap firstFrame(const QByteArray &data) {
    const WebPData bytes{reinterpret_cast<const uint8_t *>(data.constData()), size_t(data.size())};
    WebPAnimDecoderOptions options;
    if (!WebPAnimDecoderOptionsInit(&options))
        throwBroken();
    options.color_mode = MODE_bgrA;
    const std::unique_ptr<WebPAnimDecoder, DeleteAnimation> decoder(WebPAnimDecoderNew(&bytes, &options));
    WebPAnimInfo info;
    uint8_t *pixels = nullptr;
    int timestamp = 0;
    if (!decoder || !WebPAnimDecoderGetInfo(decoder.get(), &info) ||
        !WebPAnimDecoderGetNext(decoder.get(), &pixels, &timestamp))
        throwBroken();
    Bitmap image = Bitmap::uninitialized(int(info.canvas_width), int(info.canvas_height));
    std::memcpy(image.pixels.data(), pixels, size_t(image.pixels.size()));
    return image;
}

} // namespace

Bitmap decodeWebp(const QByteArray &data, int longestSide, const OnSize &onSize) {
    const auto *bytes = reinterpret_cast<const uint8_t *>(data.constData());
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config) || WebPGetFeatures(bytes, size_t(data.size()), &config.input) != VP8_STATUS_OK)
        throwBroken();
    checkSize(config.input.width, config.input.height);
    if (!onSize(config.input.width, config.input.height))
        return {};
    if (config.input.has_animation) {
        Bitmap image = firstFrame(data);
        image.opaque = !config.input.has_alpha;
        return image;
    }
    // The library only averages: half of the way down is left to a better filter.
    const QSize size = fitted(config.input.width, config.input.height, std::min(longestSide, INT_MAX / 2) * 2);
    Bitmap image = Bitmap::uninitialized(size.width(), size.height());
    image.opaque = !config.input.has_alpha;
    if (size.width() != config.input.width || size.height() != config.input.height) {
        config.options.use_scaling = 1;
        config.options.scaled_width = size.width();
        config.options.scaled_height = size.height();
    }
    config.output.colorspace = MODE_bgrA;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = reinterpret_cast<uint8_t *>(image.pixels.data());
    config.output.u.RGBA.stride = image.width * 4;
    config.output.u.RGBA.size = size_t(image.pixels.size());
    if (WebPDecode(bytes, size_t(data.size()), &config) != VP8_STATUS_OK)
        throwBroken();
    return image;
}

} // namespace ludarium::imaging
