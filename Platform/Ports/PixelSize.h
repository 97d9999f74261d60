#pragma once

#include "Platform/Values/Export.h"

#include <cstdint>

namespace vantix {

/// The size of an encoded picture, in pixels, as it stands upright (an orientation tag is applied).
struct PixelSize {
    int width = 0;
    int height = 0;

    bool operator==(const PixelSize&) const = default;
};

inline std::int64_t area(PixelSize size) { return std::int64_t{size.width} * size.height; }

/// The largest size of the same shape within `bound` and `most` pixels that is no enlargement; `bound` itself if that
/// has the shape but for the rounding to pixels.
VANTIX_EXPORT PixelSize fitted(PixelSize size, PixelSize bound, std::int64_t most);

}  // namespace vantix
