#pragma once

#include <cstdint>
#include <string_view>

namespace vantix {

/// How many bytes the decoder of lossless WebP needs for the prefix codes of a picture: of the payload of a chunk
/// "VP8L", or of "ALPH", whose size stands elsewhere. A picture may hold 65,536 groups of them, each in a few bits,
/// and the decoder makes tables of kilobytes from each. What is damaged needs none.
std::int64_t memoryForCodesOfVP8L(std::string_view payload);
std::int64_t memoryForCodesOfALPH(std::string_view payload, int width, int height);

}  // namespace vantix
