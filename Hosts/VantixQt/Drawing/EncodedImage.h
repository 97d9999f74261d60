#pragma once

#include <optional>
#include <string_view>

namespace vantix {

/// What a picture's bytes say about themselves before anybody decodes them.
namespace EncodedImage {

enum class Format { png, jpeg, gif, webp };

/// Told from the first bytes alone; absent for anything else.
std::optional<Format> format(std::string_view bytes);

/// Whether the bytes reach to the end of the picture (of the first one, for a GIF) and, in a PNG, agree with their
/// checksums. Some decoders fill what is missing with gray; others write their complaints to standard error.
bool isIntact(std::string_view bytes, Format format);

/// Whether the picture, which is intact, can be decoded smaller than it is without ever having all its pixels in
/// memory: a PNG or JPEG whose lines come one after the other, complete.
bool comesLineByLine(std::string_view bytes, Format format);

}  // namespace EncodedImage

}  // namespace vantix
