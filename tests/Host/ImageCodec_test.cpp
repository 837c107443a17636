#include "Host/Imaging/ImageCodec.h"

#include "support/SamplePictures.h"

#include <QDir>
#include <QFile>
#include <QSize>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <png.h>
#include <sys/stat.h>
#include <webp/encode.h>

namespace ludarium::test {

namespace {

QByteArray pngOf(const Bitmap &image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = png_uint_32(image.width);
    png.height = png_uint_32(image.height);
    png.format = PNG_FORMAT_BGRA;
    png_alloc_size_t size = 0;
    png_image_write_to_memory(&png, nullptr, &size, 0, image.pixels.constData(), 0, nullptr);
    QByteArray data(qsizetype(size), '\0');
    EXPECT_TRUE(png_image_write_to_memory(&png, data.data(), &size, 0, image.pixels.constData(), 0, nullptr));
    return data;
}

QByteArray webpOf(const Bitmap &image) {
    uint8_t *bytes = nullptr;
    const size_t size = WebPEncodeLosslessBGRA(reinterpret_cast<const uint8_t *>(image.pixels.constData()), image.width,
                                               image.height, image.width * 4, &bytes);
    const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
    WebPFree(bytes);
    return data;
}

/// A GIF of 2 × 2 pixels: red and green above, blue and a transparent one below.
QByteArray smallGif() {
    return QByteArray::fromHex("474946383961020002009100"
                               "00"
                               "ff0000"
                               "00ff00"
                               "0000ff"
                               "ffffff"
                               "21f904010000030"
                               "0"
                               "2c00000000020002000002"
                               "03"
                               "44340"
                               "5"
                               "00"
                               "3b");
}

QByteArray withOrientation(const QByteArray &jpeg, char orientation) {
    QByteArray exif("Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 24);
    exif.append(orientation).append(QByteArray(7, '\0'));
    QByteArray segment("\xff\xe1\0", 3);
    segment.append(char(exif.size() + 2)).append(exif);
    return QByteArray(jpeg).insert(2, segment);
}

/// A JPEG whose last scan comes `repeats` times more.
QByteArray manyScans(int repeats) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    uchar *bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = info.image_height = 64;
    info.input_components = 4;
    info.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&info);
    jpeg_simple_progression(&info);
    jpeg_start_compress(&info, TRUE);
    Bitmap image = quarters(64, 64);
    while (info.next_scanline < info.image_height) {
        JSAMPROW row = image.row(int(info.next_scanline));
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
    jpeg_destroy_compress(&info);
    std::free(bytes);
    const qsizetype scan = data.lastIndexOf("\xff\xda");
    const QByteArray last = data.mid(scan, data.size() - 2 - scan);
    return data.insert(data.size() - 2, last.repeated(repeats));
}

QByteArray pngOfSize(quint32 width, quint32 height) {
    QByteArray data = pngOf(quarters(2, 2));
    for (int i = 0; i < 4; ++i) {
        data[16 + i] = char(width >> (24 - 8 * i));
        data[20 + i] = char(height >> (24 - 8 * i));
    }
    quint32 sum = 0xffffffff;
    for (int i = 12; i < 29; ++i) {
        sum ^= uchar(data[i]);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? sum >> 1 ^ 0xedb88320 : sum >> 1;
    }
    for (int i = 0; i < 4; ++i)
        data[29 + i] = char(~sum >> (24 - 8 * i));
    return data;
}

QByteArray jpegOfSize(const QByteArray &size) {
    QByteArray data = jpegOf(64, 64);
    data.replace(data.indexOf("\xff\xc0") + 5, 4, size);
    return data;
}

} // namespace

TEST(ImageCodec, DecodesEveryFormatByItsContentAndAtTheWantedSize) {
    const Bitmap original = quarters(120, 80);
    Bitmap clear = original;
    for (int y = 40; y < 80; ++y)
        for (int x = 60; x < 120; ++x)
            clear.row(y)[x * 4 + 3] = 0;
    struct Case {
        const char *what;
        QByteArray data;
        QSize size;
        const char *last; ///< the lower right quarter
    };
    for (const auto &[what, data, size, last] :
         {Case{"JPEG", jpegOf(120, 80), {120, 80}, "white"}, Case{"PNG", pngOf(original), {120, 80}, "white"},
          Case{"PNG with alpha", pngOf(clear), {120, 80}, "clear"}, Case{"WebP", webpOf(original), {120, 80}, "white"},
          Case{"WebP with alpha", webpOf(clear), {120, 80}, "clear"}, Case{"GIF", smallGif(), {2, 2}, "clear"}}) {
        for (const int longest : {0, 500, 119, 60, 15, 1}) {
            const Bitmap image = decodeImage(data, longest);
            QSize wanted = size;
            if (longest > 0 && longest < size.width())
                wanted = QSize(longest, std::max(1, qRound(double(size.height()) * longest / size.width())));
            ASSERT_EQ(QSize(image.width, image.height), wanted) << what << longest;
            EXPECT_EQ(image.pixels.size(), image.bytes());
            if (longest == 1)
                continue;
            EXPECT_STREQ(colorAt(image, 0, 0), "red") << what << longest;
            EXPECT_STREQ(colorAt(image, image.width - 1, 0), "green") << what << longest;
            EXPECT_STREQ(colorAt(image, 0, image.height - 1), "blue") << what << longest;
            EXPECT_STREQ(colorAt(image, image.width - 1, image.height - 1), last) << what << longest;
            EXPECT_EQ(image.opaque, qstrcmp(last, "white") == 0) << what;
        }
    }
}

TEST(ImageCodec, TurnsPicturesUprightAsTheCameraSays) {
    // The colours of the corners in reading order, for each of the eight orientations.
    const char *const corners[8][4]{{"red", "green", "blue", "white"}, {"green", "red", "white", "blue"},
                                    {"white", "blue", "green", "red"}, {"blue", "white", "red", "green"},
                                    {"red", "blue", "green", "white"}, {"blue", "red", "white", "green"},
                                    {"white", "green", "blue", "red"}, {"green", "white", "red", "blue"}};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Bitmap image = decodeImage(withOrientation(jpegOf(120, 80), char(orientation)), 60);
        ASSERT_EQ(QSize(image.width, image.height), orientation < 5 ? QSize(60, 40) : QSize(40, 60)) << orientation;
        for (int i = 0; i < 4; ++i)
            EXPECT_STREQ(colorAt(image, i % 2 ? image.width - 1 : 0, i / 2 ? image.height - 1 : 0),
                         corners[orientation - 1][i])
                << orientation << " corner " << i;
    }
}

TEST(ImageCodec, AveragesWhatItMakesSmaller) {
    Bitmap stripes = Bitmap::uninitialized(400, 300);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x)
            memset(stripes.row(y) + x * 4, x % 2 ? 255 : 55, 4);
    const Bitmap small = scaled(stripes, 40, 30);
    for (int x = 1; x < 39; ++x)
        EXPECT_NEAR(small.row(15)[x * 4], 155, 2) << x;
    const Bitmap large = scaled(quarters(3, 3), 31, 17);
    EXPECT_STREQ(colorAt(large, 0, 0), "red");
    EXPECT_STREQ(colorAt(large, 30, 16), "white");
}

TEST(ImageCodec, RefusesWhatIsNoPictureBeforeItTakesTimeOrMemory) {
    QTemporaryDir folder;
    using Case = ImageError::Case;
    const QByteArray huge = QByteArray::fromHex("ea60ea60"); // 60,000 × 60,000
    const QByteArray jpeg = jpegOf(640, 640);
    QByteArray hugeGif = smallGif();
    hugeGif.replace(6, 4, QByteArray::fromHex("60ea60ea"));
    struct Refused {
        const char *what;
        QByteArray data;
        Case reason;
    };
    for (const auto &[what, data, reason] :
         {Refused{"empty", {}, Case::broken}, Refused{"text", "This is no picture.\n", Case::broken},
          Refused{"JPEG's first bytes", "\xff\xd8\xff not a picture", Case::broken},
          Refused{"half a JPEG", jpeg.first(jpeg.size() / 2), Case::broken},
          Refused{"huge JPEG", jpegOfSize(huge), Case::tooLarge},
          Refused{"JPEG without pixels", jpegOfSize(QByteArray(4, '\0')), Case::broken},
          Refused{"JPEG of hundreds of scans", manyScans(400), Case::broken},
          Refused{"half a PNG", pngOf(quarters(90, 90)).first(120), Case::broken},
          Refused{"huge PNG", pngOfSize(60'000, 60'000), Case::tooLarge},
          Refused{"half a GIF", smallGif().first(30), Case::broken}, Refused{"huge GIF", hugeGif, Case::tooLarge},
          Refused{"half a WebP", webpOf(quarters(90, 90)).first(40), Case::broken}}) {
        QFile file(folder.filePath(QStringLiteral("picture.jpg")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
        file.close();
        for (const int longest : {0, 100})
            try {
                decodeImageFile(file.fileName(), longest);
                ADD_FAILURE() << what << " was decoded";
            } catch (const ImageError &error) {
                EXPECT_EQ(error.kind(), reason) << what << ": " << error.what();
                EXPECT_STRNE(error.what(), "") << what;
            }
    }
    EXPECT_FALSE(decodeImage(manyScans(20)).isNull()) << "a few scans more than usual are no attack";
    EXPECT_FALSE(decodeImage(jpeg.chopped(2)).isNull()) << "only the end mark is missing";
}

TEST(ImageCodec, ReadsOnlyFilesAndNeverWaits) {
    QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder.jpg")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath(QStringLiteral("pipe.jpg"))).constData(), 0600), 0);
    struct Case {
        const char *name;
        ImageError::Case reason;
    };
    for (const auto &[name, reason] :
         {Case{"folder.jpg", ImageError::Case::broken}, Case{"pipe.jpg", ImageError::Case::broken},
          Case{"none.jpg", ImageError::Case::unreadable}})
        try {
            decodeImageFile(folder.filePath(QString::fromLatin1(name)));
            ADD_FAILURE() << name;
        } catch (const ImageError &error) {
            EXPECT_EQ(error.kind(), reason) << name;
        }
}

} // namespace ludarium::test
