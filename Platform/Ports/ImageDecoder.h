#pragma once

#include "Platform/Ports/PixelSize.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/Result.h"

#include <string_view>

namespace vantix {

/// Decodes PNG, JPEG, GIF (its first frame) and WebP. Usable from any thread but the main one: decoding takes time.
/// Bytes come from anywhere, so a decoder bounds what they can cost by their content, not by their length:
/// - A picture has no more than 40 megapixels, or 160 if its format can be decoded smaller line by line (a JPEG with
///   all colours in one scan, a PNG that is not interlaced). The result has no more than 10: a larger one is made
///   smaller.
/// - Its bytes, what decoding takes and the result are no more than 80 MiB together. The result is made smaller for
///   that; a picture that leaves no room for half a megapixel is refused (a progressive JPEG needs 3 to 6 bytes for a
///   pixel, a lossless WebP 4, one with transparency 5, a GIF 8).
///   That is for each decode: those that run at once take as much each.
/// - What takes more work than its size calls for is refused before (a JPEG of more than 32 scans) or passed over
///   (texts in a PNG, all frames but the first). A decode that has taken two seconds of the processor's time is given
///   up, but for a GIF, which is decoded in one call: its length and its size alone bound the work for it.
class VANTIX_EXPORT ImageDecoder {
public:
    virtual ~ImageDecoder() = default;

    /// Reads the header only. Fails on bytes that are no picture of a known format.
    virtual Result<PixelSize> probe(std::string_view bytes) const = 0;

    /// Decodes upright at no more than `bound` pixels, never enlarged, with the aspect ratio kept to the rounding to
    /// whole pixels: a bound that has the picture's shape is filled, if memory allows. Fails on damaged bytes, and on
    /// what costs too much.
    virtual Result<Image> decode(std::string_view bytes, PixelSize bound) const = 0;
};

}  // namespace vantix
