#include "Host/Imaging/ImageCodec.h"
#include "Host/Imaging/ImageFormats.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
// After <cstdio>, which it needs.
#include <jerror.h>
#include <jpeglib.h>

namespace ludarium {

namespace {

/// Honest files have about ten; each costs the time of a whole picture.
constexpr int mostScans = 100;
constexpr long mostCodecMemory = 536'870'912;

/// The library reports a failure by a function that must not return: it jumps back to `guarded`. Nothing between the
/// two may own anything.
struct Codec {
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf back{};
    char message[JMSG_LENGTH_MAX] = "";
    const std::stop_token *stop = nullptr;
    bool stopped = false;
};

Codec &codecOf(j_common_ptr info) {
    return *static_cast<Codec *>(info->client_data);
}

void jumpBack(j_common_ptr info) {
    Codec &codec = codecOf(info);
    info->err->format_message(info, codec.message);
    std::longjmp(codec.back, 1);
}

void noteMessage(j_common_ptr info, int level) {
    // A file that ends early would be a picture with a grey lower part; one that lacks no more than its end mark is
    // whole. Other damage is common and hardly seen.
    constexpr unsigned lastRows = 32;
    if (level >= 0 || info->err->msg_code != JWRN_JPEG_EOF || !info->is_decompressor)
        return;
    const auto *decoding = reinterpret_cast<j_decompress_ptr>(info);
    if (decoding->output_scanline + lastRows < decoding->output_height || decoding->output_height == 0)
        jumpBack(info);
}

void noteProgress(j_common_ptr info) {
    Codec &codec = codecOf(info);
    if (codec.stop && codec.stop->stop_requested()) {
        codec.stopped = true;
        std::longjmp(codec.back, 1);
    }
    if (info->is_decompressor && reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > mostScans)
        ERREXIT(info, JERR_BAD_PROGRESSION);
}

template<typename Info>
void attach(Info &info, Codec &codec) {
    info.err = jpeg_std_error(&codec.errors);
    codec.errors.error_exit = jumpBack;
    codec.errors.emit_message = noteMessage;
    codec.errors.output_message = [](j_common_ptr) {};
    info.client_data = &codec;
}

template<typename Action>
bool guarded(Codec &codec, const Action &action) {
    if (setjmp(codec.back) != 0)
        return false;
    action();
    return true;
}

[[noreturn]] void throwBroken(const Codec &codec) {
    throw ImageError(ImageError::Case::broken, codec.message);
}

struct Decoder : Codec {
    jpeg_decompress_struct info{};

    explicit Decoder(const std::stop_token &token) {
        attach(info, *this);
        stop = &token;
        progress.progress_monitor = noteProgress;
    }
    ~Decoder() { jpeg_destroy_decompress(&info); }

    bool readHeader(const QByteArray &data) {
        return guarded(*this, [&] {
            jpeg_create_decompress(&info);
            info.progress = &progress;
            info.mem->max_memory_to_use = mostCodecMemory;
            jpeg_mem_src(&info, reinterpret_cast<const uchar *>(data.constData()),
                         static_cast<unsigned long>(data.size()));
            jpeg_save_markers(&info, JPEG_APP0 + 1, 0xffff);
            jpeg_read_header(&info, TRUE);
        });
    }
    int orientation() const {
        constexpr size_t headSize = 6;
        for (const jpeg_marker_struct *marker = info.marker_list; marker; marker = marker->next)
            if (marker->data_length > headSize && std::memcmp(marker->data, "Exif\0\0", headSize) == 0)
                return imaging::exifOrientation(marker->data + headSize, marker->data_length - headSize);
        return 1;
    }
    /// Whether the library cannot make red, green and blue of the colours by itself.
    bool isPrint() const { return info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK; }

    bool start(int longestSide) {
        return guarded(*this, [&] {
            info.out_color_space = isPrint() ? JCS_CMYK : JCS_EXT_BGRA;
            info.scale_denom = 8;
            info.scale_num = 8;
            const auto longest = std::max(info.image_width, info.image_height);
            if (longestSide > 0)
                // The library is fast at halves, but makes them block by block, which shows: the last step down, by at
                // least a third, is left to a better filter.
                for (const unsigned eighths : {1, 2, 4})
                    if (2 * ((longest * eighths + 7) / 8) >= 3 * unsigned(longestSide)) {
                        info.scale_num = eighths;
                        break;
                    }
            if (info.scale_num < 8)
                info.do_fancy_upsampling = FALSE;
            jpeg_start_decompress(&info);
        });
    }
    bool readRows(Bitmap &image) {
        return guarded(*this, [&] {
            while (info.output_scanline < info.output_height) {
                JSAMPROW row = image.row(int(info.output_scanline));
                jpeg_read_scanlines(&info, &row, 1);
            }
        });
    }
};

/// Four inks, each 255 where there is none of it, as Adobe's programs write them.
void inksToColors(Bitmap &image, bool inverted) {
    auto *pixel = reinterpret_cast<uchar *>(image.pixels.data());
    for (const uchar *const end = pixel + image.pixels.size(); pixel != end; pixel += 4) {
        const auto light = [&](int i) { return inverted ? pixel[i] : 255 - pixel[i]; };
        const int black = light(3);
        const int red = light(0) * black / 255;
        const int green = light(1) * black / 255;
        const int blue = light(2) * black / 255;
        pixel[0] = uchar(blue);
        pixel[1] = uchar(green);
        pixel[2] = uchar(red);
        pixel[3] = 255;
    }
}

struct Encoder : Codec {
    jpeg_compress_struct info{};
    uchar *output = nullptr;
    unsigned long size = 0;

    Encoder() { attach(info, *this); }
    ~Encoder() {
        jpeg_destroy_compress(&info);
        std::free(output);
    }
    bool write(const Bitmap &image, int quality) {
        return guarded(*this, [&] {
            jpeg_create_compress(&info);
            jpeg_mem_dest(&info, &output, &size);
            info.image_width = unsigned(image.width);
            info.image_height = unsigned(image.height);
            info.input_components = 4;
            info.in_color_space = JCS_EXT_BGRX;
            jpeg_set_defaults(&info);
            jpeg_set_quality(&info, quality, TRUE);
            jpeg_start_compress(&info, TRUE);
            while (info.next_scanline < info.image_height) {
                // The library does not write to it.
                JSAMPROW row = const_cast<uchar *>(image.row(int(info.next_scanline)));
                jpeg_write_scanlines(&info, &row, 1);
            }
            jpeg_finish_compress(&info);
        });
    }
};

} // namespace

Bitmap imaging::decodeJpeg(const QByteArray &data, int longestSide, const OnSize &onSize, const std::stop_token &stop) {
    Decoder decoder(stop);
    if (!decoder.readHeader(data))
        throwBroken(decoder);
    checkSize(decoder.info.image_width, decoder.info.image_height);
    if (!onSize(decoder.info.image_width, decoder.info.image_height))
        return {};
    bool done = decoder.start(longestSide);
    Bitmap image;
    if (done) {
        image = Bitmap::uninitialized(int(decoder.info.output_width), int(decoder.info.output_height));
        done = decoder.readRows(image);
    }
    if (decoder.stopped)
        return {};
    if (!done)
        throwBroken(decoder);
    if (decoder.isPrint())
        inksToColors(image, decoder.info.saw_Adobe_marker);
    // Turning is cheaper on the smaller picture.
    const int orientation = decoder.orientation();
    if (orientation == 1)
        return image;
    const QSize size = fitted(image.width, image.height, longestSide);
    return upright(scaled(image, size.width(), size.height()), orientation);
}

QByteArray encodeJpeg(const Bitmap &image, int quality) {
    Encoder encoder;
    if (image.isNull() || !encoder.write(image, quality))
        throwBroken(encoder);
    return QByteArray(reinterpret_cast<const char *>(encoder.output), qsizetype(encoder.size));
}

} // namespace ludarium
