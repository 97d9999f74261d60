#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Geometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vantix {

/// Pixels, row by row from the top, each 0xAARRGGBB with premultiplied alpha.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const Bitmap&) const = default;
};

/// A picture: a bitmap or an SVG drawing. Immutable and shared when copied; usable from any thread.
struct Image {
    std::shared_ptr<const Bitmap> bitmap;
    /// The text of an SVG drawing; set when `bitmap` is not.
    std::shared_ptr<const std::string> vector;
    /// The size at which the picture stands by itself: points for a drawing, pixels of the undecoded original for a
    /// bitmap. Its ratio is the picture's aspect ratio.
    Size naturalSize;

    bool isNull() const { return !bitmap && !vector; }
    /// Same content by identity: two decodings of the same bytes differ.
    bool operator==(const Image&) const = default;
};

/// A picture made of pixels, each 0xAARRGGBB with premultiplied alpha, row by row from the top; it stands at one point
/// a pixel. A null image when the pixels are not `width` times `height`, or when there are none.
VANTIX_EXPORT Image bitmapImage(int width, int height, std::vector<std::uint32_t> pixels);

/// The picture of an SVG drawing; its natural size is the drawing's width and height.
VANTIX_EXPORT Image vectorImage(const std::string& svg);

}  // namespace vantix
