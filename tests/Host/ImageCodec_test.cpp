#include "Host/Imaging/ImageCodec.h"

#include "Host/Imaging/MemoryBudget.h"
#include "support/SamplePictures.h"

#include <QDir>
#include <QFile>
#include <QSize>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <cmath>
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

QByteArray exifOf(char orientation) {
    const QByteArray exif("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18);
    return exif + orientation + QByteArray(7, '\0');
}

QByteArray pngWithOrientation(QByteArray png, char orientation) {
    const QByteArray exif = exifOf(orientation);
    const QByteArray sum(4, '\0'); // the library takes no notice of the chunk
    const qsizetype pixels = png.indexOf("IDAT") - 4;
    return png.insert(pixels, QByteArray("\0\0\0", 3) + char(exif.size()) + "eXIf" + exif + sum);
}

QByteArray webpWithOrientation(const QByteArray &webp, char orientation) {
    const QByteArray exif = exifOf(orientation);
    QByteArray file = webp + "EXIF" + char(exif.size()) + QByteArray("\0\0\0", 3) + exif;
    file[4] = char(file.size() - 8);
    file[5] = char((file.size() - 8) >> 8);
    return file;
}

QByteArray withOrientation(const QByteArray &jpeg, char orientation) {
    const QByteArray exif = QByteArray("Exif\0\0", 6) + exifOf(orientation);
    QByteArray segment("\xff\xe1\0", 3);
    segment.append(char(exif.size() + 2)).append(exif);
    return QByteArray(jpeg).insert(2, segment);
}

/// A JPEG of so many four-part pixels a side, `setUp` after the defaults.
template<typename SetUp, typename Row>
QByteArray writtenJpeg(int side, J_COLOR_SPACE colors, const SetUp &setUp, const Row &row) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    uchar *bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = info.image_height = JDIMENSION(side);
    info.input_components = 4;
    info.in_color_space = colors;
    jpeg_set_defaults(&info);
    setUp(info);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        JSAMPROW line = row(int(info.next_scanline));
        jpeg_write_scanlines(&info, &line, 1);
    }
    jpeg_finish_compress(&info);
    QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
    jpeg_destroy_compress(&info);
    std::free(bytes);
    return data;
}

/// A JPEG whose last scan comes `repeats` times more.
QByteArray manyScans(int repeats) {
    Bitmap image = quarters(64, 64);
    QByteArray data = writtenJpeg(
        64, JCS_EXT_BGRX, [](jpeg_compress_struct &info) { jpeg_simple_progression(&info); },
        [&](int y) { return image.row(y); });
    const qsizetype scan = data.lastIndexOf("\xff\xda");
    const QByteArray last = data.mid(scan, data.size() - 2 - scan);
    return data.insert(data.size() - 2, last.repeated(repeats));
}

/// Sixteen bits a component, without a word on what they mean.
QByteArray deepPng() {
    QByteArray data;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    const auto append = [](png_structp writer, png_bytep bytes, size_t count) {
        static_cast<QByteArray *>(png_get_io_ptr(writer))->append(reinterpret_cast<const char *>(bytes), int(count));
    };
    png_set_write_fn(png, &data, append, [](png_structp) {});
    png_set_IHDR(png, info, 16, 16, 16, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    QByteArray row = QByteArray::fromHex("c8c864643232").repeated(16);
    for (int y = 0; y < 16; ++y)
        png_write_row(png, reinterpret_cast<png_bytep>(row.data()));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return data;
}

/// Cyan, magenta, yellow and black, inverted as usual.
QByteArray inkJpeg() {
    QByteArray inks = QByteArray::fromHex("fa7d3fcc").repeated(16); // the colours over 204, of 255, of black
    const auto setUp = [](jpeg_compress_struct &info) {
        jpeg_set_quality(&info, 100, TRUE);
        info.write_Adobe_marker = TRUE;
    };
    return writtenJpeg(16, JCS_CMYK, setUp, [&](int) { return reinterpret_cast<JSAMPROW>(inks.data()); });
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
        const auto turn = char(orientation);
        for (const QByteArray &data :
             {withOrientation(jpegOf(120, 80), turn), pngWithOrientation(pngOf(quarters(120, 80)), turn),
              webpWithOrientation(webpOf(quarters(120, 80)), turn)}) {
            const Bitmap image = decodeImage(data, 60);
            ASSERT_EQ(QSize(image.width, image.height), orientation < 5 ? QSize(60, 40) : QSize(40, 60)) << orientation;
            for (int i = 0; i < 4; ++i)
                EXPECT_STREQ(colorAt(image, i % 2 ? image.width - 1 : 0, i / 2 ? image.height - 1 : 0),
                             corners[orientation - 1][i])
                    << orientation << " corner " << i;
        }
    }
}

TEST(ImageCodec, KeepsTheDetailThatASmallerPictureCanHoldAndNoOther) {
    // Waves of light across 1200 columns, made 400 wide: how much of them is left, told by the spread of the middle
    // row.
    struct Case {
        int columnsAWave;
        double least;
        double most;
    };
    for (const auto &[columns, least, most] : {Case{60, 0.98, 1.01}, Case{12, 0.95, 1.05}, Case{9, 0.75, 1.05},
                                               Case{4, 0, 0.06}, Case{3, 0, 0.02}, Case{2, 0, 0.02}}) {
        Bitmap waves = Bitmap::uninitialized(1200, 30);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 1200; ++x)
                memset(waves.row(y) + x * 4, qRound(128 + 100 * std::cos(2 * M_PI * x / columns)), 4);
        const Bitmap small = scaled(waves, 400, 10);
        double sum = 0;
        for (int x = 40; x < 360; ++x)
            sum += std::pow(small.row(5)[x * 4] - 128, 2);
        const double left = std::sqrt(sum / 320 * 2) / 100;
        EXPECT_GE(left, least) << columns;
        EXPECT_LE(left, most) << columns;
    }
    const Bitmap large = scaled(quarters(3, 3), 31, 17);
    EXPECT_STREQ(colorAt(large, 0, 0), "red");
    EXPECT_STREQ(colorAt(large, 30, 16), "white");
}

TEST(ImageCodec, LeavesNoFringeWhereAPictureBecomesTransparent) {
    // A yellow disc on nothing, where the colour of what is not seen is black.
    Bitmap disc = Bitmap::uninitialized(300, 300);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 300; ++x) {
            const bool inside = std::hypot(x - 150, y - 150) < 120;
            const uchar pixel[]{0, uchar(inside ? 255 : 0), uchar(inside ? 255 : 0), uchar(inside ? 255 : 0)};
            memcpy(disc.row(y) + x * 4, pixel, 4);
        }
    for (const QByteArray &data : {pngOf(disc), webpOf(disc)}) {
        const Bitmap small = decodeImage(data, 47);
        EXPECT_FALSE(small.opaque);
        for (int y = 0; y < small.height; ++y)
            for (int x = 0; x < small.width; ++x) {
                const uchar *pixel = small.row(y) + x * 4;
                ASSERT_NEAR(pixel[2], pixel[3], 2) << x << ' ' << y << ": darker or lighter than the disc";
                ASSERT_LE(pixel[0], pixel[3]) << "not premultiplied";
            }
    }
}

TEST(ImageCodec, ReadsTheUnusualKindsOfPictures) {
    // Both of one colour: 200, 100, 50 of 255.
    for (const QByteArray &data : {deepPng(), inkJpeg()}) {
        const Bitmap image = decodeImage(data);
        const uchar *pixel = image.row(7) + 7 * 4;
        EXPECT_NEAR(pixel[2], 200, 3);
        EXPECT_NEAR(pixel[1], 100, 3);
        EXPECT_NEAR(pixel[0], 50, 3);
    }
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

TEST(ImageCodec, SharesOneBudgetAmongAllThreads) {
    MemoryBudget budget(100);
    std::atomic<int> served = 0;
    QThreadPool pool;
    pool.setMaxThreadCount(8);
    for (int i = 0; i < 40; ++i)
        pool.start([&, i] {
            MemoryBudget::Share share(budget, {});
            served += share.claim(i % 5 == 0 ? 1000 : 40) ? 1 : 0; // what is larger than all waits for all
            QThread::msleep(1);
        });
    ASSERT_TRUE(pool.waitForDone(30'000)) << "nobody gives back what he took";
    EXPECT_EQ(served, 40);
    EXPECT_EQ(budget.mostTaken(), 100);

    std::stop_source givenUp;
    givenUp.request_stop();
    EXPECT_FALSE(MemoryBudget::Share(budget, givenUp.get_token()).claim(1));
    EXPECT_FALSE(decodeImage(jpegOf(400, 300)).isNull());
    EXPECT_GE(decodingBudget().mostTaken(), 400 * 300 * 4) << "a picture is decoded outside the budget";
    EXPECT_FALSE(decodeImage(pngOf(quarters(500, 400))).isNull());
    EXPECT_GE(decodingBudget().mostTaken(), 500 * 400 * 4);
}

} // namespace ludarium::test
