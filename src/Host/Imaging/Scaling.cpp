#include "Host/Imaging/ImageCodec.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace ludarium {

namespace {

/// One pixel with room for sums; the compiler makes vector instructions of its arithmetic.
using Pixel = float __attribute__((vector_size(16)));
using Bytes = uchar __attribute__((vector_size(4)));

/// The weighted inputs of each output along one side: a triangle as wide as an output pixel, which averages when the
/// picture becomes smaller and interpolates when it becomes larger.
struct Filter {
    std::vector<int> first;
    std::vector<float> weights; ///< `taps` for each output
    int taps = 0;

    Filter(int from, int to) {
        const double step = double(from) / to;
        const double reach = std::max(1.0, step);
        taps = std::min(from, int(std::ceil(reach)) * 2 + 1);
        first.resize(size_t(to));
        weights.assign(size_t(to) * size_t(taps), 0);
        for (int i = 0; i < to; ++i) {
            const double centre = (i + 0.5) * step - 0.5;
            const int begin = std::clamp(int(std::ceil(centre - reach)), 0, from - taps);
            first[size_t(i)] = begin;
            float *weight = &weights[size_t(i) * size_t(taps)];
            double sum = 0;
            for (int k = 0; k < taps; ++k)
                sum += weight[k] = float(std::max(0.0, 1 - std::abs(begin + k - centre) / reach));
            for (int k = 0; k < taps; ++k)
                weight[k] = float(weight[k] / sum);
        }
    }
};

Pixel load(const uchar *bytes) {
    Bytes pixel;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return __builtin_convertvector(pixel, Pixel);
}

void store(Pixel sum, uchar *bytes) {
    using Whole = int __attribute__((vector_size(16)));
    const Whole rounded = __builtin_convertvector(sum + 0.5F, Whole);
    const Bytes pixel = __builtin_convertvector(rounded, Bytes);
    std::memcpy(bytes, &pixel, sizeof pixel);
}

void scaleRow(const uchar *from, uchar *to, int width, const Filter &filter) {
    const float *weight = filter.weights.data();
    for (int x = 0; x < width; ++x, weight += filter.taps) {
        const uchar *source = from + size_t(filter.first[size_t(x)]) * 4;
        Pixel sum{};
        for (int k = 0; k < filter.taps; ++k)
            sum += weight[k] * load(source + k * 4);
        store(sum, to + size_t(x) * 4);
    }
}

} // namespace

Bitmap scaled(const Bitmap &image, int width, int height) {
    if (image.isNull() || (image.width == width && image.height == height))
        return image;
    const Filter across(image.width, width);
    const Filter down(image.height, height);
    // Rows are made narrow when they are first needed, and kept while a later output row needs them.
    const size_t rowBytes = size_t(width) * 4;
    std::vector<uchar> narrow(rowBytes * size_t(down.taps));
    int made = 0;
    Bitmap result = Bitmap::uninitialized(width, height);
    result.opaque = image.opaque;
    std::vector<float> sums(rowBytes);
    for (int y = 0; y < height; ++y) {
        const int begin = down.first[size_t(y)];
        for (made = std::max(made, begin); made < begin + down.taps; ++made)
            scaleRow(image.row(made), &narrow[size_t(made % down.taps) * rowBytes], width, across);
        const float *weight = &down.weights[size_t(y) * size_t(down.taps)];
        std::fill(sums.begin(), sums.end(), 0.5F);
        for (int k = 0; k < down.taps; ++k) {
            const float share = weight[k];
            if (share == 0)
                continue;
            const uchar *row = &narrow[size_t((begin + k) % down.taps) * rowBytes];
            float *sum = sums.data();
            for (size_t i = 0; i < rowBytes; ++i)
                sum[i] += share * float(row[i]);
        }
        uchar *out = result.row(y);
        for (size_t i = 0; i < rowBytes; ++i)
            out[i] = uchar(int(sums[i]));
    }
    return result;
}

} // namespace ludarium
