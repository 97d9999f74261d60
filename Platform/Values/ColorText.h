#pragma once

#include "Platform/Values/Color.h"

#include <optional>
#include <string_view>

namespace vantix {

/// The colour that a text names: "#RRGGBB", "#RGB" or "#AARRGGBB" in any letter case; absent for any other text.
std::optional<Color> colorFromText(std::string_view text);

}  // namespace vantix
