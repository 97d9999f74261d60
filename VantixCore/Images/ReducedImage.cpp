#include "VantixCore/Images/ReducedImage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantix {

namespace {

using Channels = std::array<float, 4>;

/// Calls `add(to, share)` for every pixel of a shorter line that a pixel of a longer one lies in, with the share of the
/// former that it fills.
template <typename Add>
void distribute(int from, int fromLength, int toLength, Add add) {
    double scale = double(toLength) / fromLength;
    double begin = from * scale;
    double end = begin + scale;
    for (int to = static_cast<int>(begin); to < toLength && to < end; ++to) {
        double share = std::min(end, to + 1.0) - std::max(begin, double(to));
        if (share > 0) add(static_cast<std::size_t>(to), static_cast<float>(share));
    }
}

void accumulate(Channels& sum, const Channels& channels, float share) {
    for (std::size_t at = 0; at < sum.size(); ++at) sum[at] += channels[at] * share;
}

Channels unpacked(std::uint32_t pixel) {
    return {float(pixel & 255), float(pixel >> 8 & 255), float(pixel >> 16 & 255), float(pixel >> 24)};
}

std::uint32_t packed(const Channels& sum) {
    std::uint32_t pixel = 0;
    for (std::size_t at = sum.size(); at-- > 0;) {
        pixel = pixel << 8 | static_cast<std::uint32_t>(std::clamp(sum[at] + 0.5F, 0.0F, 255.0F));
    }
    return pixel;
}

std::vector<Channels> reducedRow(const Bitmap& bitmap, int row, int width) {
    std::vector<Channels> sums(static_cast<std::size_t>(width));
    const std::uint32_t* pixels = bitmap.pixels.data() + std::ptrdiff_t{row} * bitmap.width;
    for (int x = 0; x < bitmap.width; ++x) {
        distribute(x, bitmap.width, width,
                   [&](std::size_t to, float share) { accumulate(sums[to], unpacked(pixels[x]), share); });
    }
    return sums;
}

/// Each pixel is the mean of those that it covers.
Bitmap averaged(const Bitmap& bitmap, PixelSize size) {
    auto width = static_cast<std::size_t>(size.width);
    Bitmap result{size.width, size.height, std::vector<std::uint32_t>(width * static_cast<std::size_t>(size.height))};
    // A row of the picture lies in two rows of the result at most.
    std::array<std::vector<Channels>, 2> sums{std::vector<Channels>(width), std::vector<Channels>(width)};
    std::size_t current = 0;
    auto finish = [&] {
        auto& row = sums[current % 2];
        std::ranges::transform(row, result.pixels.begin() + static_cast<std::ptrdiff_t>(current * width), packed);
        std::ranges::fill(row, Channels{});
        ++current;
    };
    for (int y = 0; y < bitmap.height; ++y) {
        auto row = reducedRow(bitmap, y, size.width);
        distribute(y, bitmap.height, size.height, [&](std::size_t to, float share) {
            if (to > current) finish();
            for (std::size_t x = 0; x < width; ++x) accumulate(sums[to % 2][x], row[x], share);
        });
    }
    finish();
    return result;
}

}  // namespace

std::optional<Image> reduced(const Image& picture, PixelSize bound) {
    const Bitmap& bitmap = *picture.bitmap;
    const PixelSize natural{static_cast<int>(picture.naturalSize.width), static_cast<int>(picture.naturalSize.height)};
    const PixelSize size = fitted(natural, bound, area(natural));
    if (size == PixelSize{bitmap.width, bitmap.height}) return picture;
    if (size.width > bitmap.width || size.height > bitmap.height) return {};
    return Image{std::make_shared<const Bitmap>(averaged(bitmap, size)), {}, picture.naturalSize};
}

}  // namespace vantix
