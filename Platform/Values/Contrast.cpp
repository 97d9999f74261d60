#include "Platform/Values/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vantix {

namespace {

constexpr double readableContrast = 4.5;

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const Color& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// Whether the color has a hue that another one would clash with.
bool isColorful(const Color& color) {
    auto [least, most] = std::minmax({color.red, color.green, color.blue});
    return most - least > 0.25;
}

}  // namespace

Color composited(const Color& over, const Color& below) {
    auto mixed = [&](double Color::*component) {
        return over.*component * over.alpha + below.*component * (1 - over.alpha);
    };
    return {mixed(&Color::red), mixed(&Color::green), mixed(&Color::blue), 1};
}

double contrast(const Color& one, const Color& other) {
    auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

Color readableColor(const Color& background) {
    bool isLight = contrast(Color::black(), background) >= contrast(Color::white(), background);
    return isLight ? Color::black() : Color::white();
}

Color readableAccent(const Color& background) {
    if (isColorful(background)) return readableColor(background);
    constexpr Color deepBlue{0, 0.4, 0.8, 1};
    constexpr Color paleBlue{0.4, 0.7, 1, 1};
    std::array blues{Color::systemBlue(), deepBlue, paleBlue};
    auto found = std::find_if(blues.begin(), blues.end(),
                              [&](const Color& blue) { return contrast(blue, background) >= readableContrast; });
    return found == blues.end() ? readableColor(background) : *found;
}

}  // namespace vantix
