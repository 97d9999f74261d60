#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/Result.h"

#include <string_view>

namespace vantix {

/// The size of an encoded picture, in pixels, as it stands upright (an orientation tag is applied).
struct PixelSize {
    int width = 0;
    int height = 0;

    bool operator==(const PixelSize&) const = default;
};

/// Decodes PNG, JPEG, GIF (its first frame) and WebP. Usable from any thread but the main one: decoding takes time.
class VANTIX_EXPORT ImageDecoder {
public:
    virtual ~ImageDecoder() = default;

    /// Reads the header only. Fails on bytes that are no picture of a known format.
    virtual Result<PixelSize> probe(std::string_view bytes) const = 0;

    /// Decodes upright at no more than `bound` pixels, never enlarged, with the aspect ratio kept to the rounding to
    /// whole pixels: a bound that has the picture's shape is filled. Fails on damaged bytes. A picture of more than 40
    /// megapixels is refused before its pixels are decoded, unless its format can be decoded smaller line by line and
    /// it has no more than 640; the result has no more than 40 in any case.
    virtual Result<Image> decode(std::string_view bytes, PixelSize bound) const = 0;
};

}  // namespace vantix
