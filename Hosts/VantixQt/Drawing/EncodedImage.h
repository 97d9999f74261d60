#pragma once

#include <optional>
#include <string_view>

namespace vantix {

/// What a picture's bytes say about themselves before anybody decodes them.
namespace EncodedImage {

enum class Format { png, jpeg, gif, webp };

/// Told from the first bytes alone; absent for anything else.
std::optional<Format> format(std::string_view bytes);

}  // namespace EncodedImage

}  // namespace vantix
