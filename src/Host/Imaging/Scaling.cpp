#include "Host/Imaging/ImageCodec.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

namespace ludarium {

namespace {

/// One pixel as numbers; the compiler makes vector instructions of its arithmetic.
using Floats = float __attribute__((vector_size(16)));
struct Pixel {
    Floats value{};
};
using Bytes = uchar __attribute__((vector_size(4)));

/// The weighted inputs of each output along one side, by a Lanczos window of three lobes as wide as an output pixel,
/// or an input pixel where the picture becomes larger.
struct Filter {
    std::vector<int> first;
    std::vector<Pixel> weights; ///< `taps` for each output, each once for every component
    int taps = 0;

    Filter(int from, int to) {
        const double step = double(from) / to;
        const double width = std::max(1.0, step);
        const double reach = lobes * width;
        taps = int(std::min(double(from), std::floor(2 * reach) + 1));
        first.reserve(size_t(to));
        weights.reserve(size_t(to) * size_t(taps));
        std::vector<double> raw(size_t(taps), 0);
        for (int i = 0; i < to; ++i) {
            const double centre = (i + 0.5) * step - 0.5;
            const int begin = std::clamp(int(std::ceil(centre - reach)), 0, from - taps);
            double sum = 0;
            for (int k = 0; k < taps; ++k)
                sum += raw[size_t(k)] = lanczos((begin + k - centre) / width);
            first.push_back(begin);
            for (const double weight : raw) {
                const auto share = float(weight / sum);
                weights.push_back(Pixel{Floats{} + share});
            }
        }
    }

  private:
    static constexpr double lobes = 3;

    static double lanczos(double x) {
        if (std::abs(x) < 1e-9)
            return 1;
        const double angle = std::numbers::pi * x;
        return std::abs(x) >= lobes ? 0 : lobes * std::sin(angle) * std::sin(angle / lobes) / (angle * angle);
    }
};

void load(const uchar *bytes, std::vector<Pixel> &row) {
    for (Pixel &pixel : row) {
        Bytes components;
        std::memcpy(&components, bytes, sizeof components);
        pixel.value = __builtin_convertvector(components, Floats);
        bytes += sizeof components;
    }
}

void scaleRow(const Pixel *from, Pixel *to, const Filter &filter) {
    const Pixel *weight = filter.weights.data();
    for (const int first : filter.first) {
        const Pixel *source = from + first;
        Floats sum{};
        for (int k = 0; k < filter.taps; ++k)
            sum += weight[k].value * source[k].value;
        (to++)->value = sum;
        weight += filter.taps;
    }
}

/// The filter has negative weights: near an edge a sum may be darker than black, lighter than white or, where it is
/// partly transparent, lighter than its alpha allows.
void store(Floats sum, uchar *bytes) {
    using Whole = int __attribute__((vector_size(16)));
    const float alpha = std::clamp(sum[3], 0.0F, 255.0F);
    const Floats most{alpha, alpha, alpha, alpha};
    sum = sum < 0 ? Floats{} : sum;
    sum = sum > most ? most : sum;
    const Bytes pixel = __builtin_convertvector(__builtin_convertvector(sum + 0.5F, Whole), Bytes);
    std::memcpy(bytes, &pixel, sizeof pixel);
}

} // namespace

Bitmap scaled(const Bitmap &image, int width, int height) {
    if (image.isNull() || (image.width == width && image.height == height))
        return image;
    const Filter across(image.width, width);
    const Filter down(image.height, height);
    // Rows are made narrow when they are first needed, and kept while a later output row needs them.
    std::vector<Pixel> wide(static_cast<size_t>(image.width));
    std::vector<Pixel> narrow(size_t(width) * size_t(down.taps));
    std::vector<const Pixel *> rows(size_t(down.taps), nullptr);
    int made = 0;
    Bitmap result = Bitmap::uninitialized(width, height);
    result.opaque = image.opaque;
    for (int y = 0; y < height; ++y) {
        const int begin = down.first[size_t(y)];
        const auto place = [&](int row) { return &narrow[size_t(row % down.taps) * size_t(width)]; };
        for (made = std::max(made, begin); made < begin + down.taps; ++made) {
            load(image.row(made), wide);
            scaleRow(wide.data(), place(made), across);
        }
        for (int k = 0; k < down.taps; ++k)
            rows[size_t(k)] = place(begin + k);
        const Pixel *weight = &down.weights[size_t(y) * size_t(down.taps)];
        uchar *out = result.row(y);
        for (int x = 0; x < width; ++x) {
            Floats sum{};
            for (int k = 0; k < down.taps; ++k)
                sum += weight[k].value * rows[size_t(k)][x].value;
            store(sum, out + size_t(x) * 4);
        }
    }
    return result;
}

} // namespace ludarium
