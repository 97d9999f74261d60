#pragma once

#include "Platform/Values/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantix {

/// A colour in sRGB; every component lies between 0 and 1.
struct VANTIX_EXPORT Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const Color&) const = default;

    /// The colour as "#RRGGBB"; its alpha is dropped.
    std::string hexString() const;
    /// As "#RRGGBB", or as "#AARRGGBB" when it is not opaque.
    std::string hexStringWithAlpha() const;

    static constexpr Color black() { return {0, 0, 0, 1}; }
    static constexpr Color white() { return {1, 1, 1, 1}; }
    static constexpr Color clear() { return {0, 0, 0, 0}; }
    static constexpr Color gray() { return {142 / 255.0, 142 / 255.0, 147 / 255.0, 1}; }
    static constexpr Color yellow() { return {1, 204 / 255.0, 0, 1}; }
    static constexpr Color systemBlue() { return {0, 122 / 255.0, 1, 1}; }
    /// The colour of controls that are not emphasised: 60 % of a dark gray.
    static constexpr Color secondary() { return {60 / 255.0, 60 / 255.0, 67 / 255.0, 0.6}; }
};

/// The colour that a text names: "#RRGGBB", "#RGB" or "#AARRGGBB" in any letter case; absent for any other text.
VANTIX_EXPORT std::optional<Color> colorFromText(std::string_view text);

}  // namespace vantix
