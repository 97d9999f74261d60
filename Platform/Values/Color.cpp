#include "Platform/Values/Color.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <system_error>

namespace vantix {

namespace {

std::optional<std::uint32_t> hexadecimal(std::string_view digits) {
    std::uint32_t number = 0;
    const char* end = digits.data() + digits.size();
    auto [stop, problem] = std::from_chars(digits.data(), end, number, 16);
    if (problem != std::errc{} || stop != end) return {};
    return number;
}

std::string pair(double component) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02lX", std::lround(component * 255));
    return text.data();
}

double component(std::uint32_t number, unsigned shift) { return ((number >> shift) & 0xFF) / 255.0; }

/// Every digit of "RGB" stands for a pair of itself.
std::uint32_t widened(std::uint32_t rgb) {
    return ((rgb & 0xF00) * 0x1100) | ((rgb & 0x0F0) * 0x110) | ((rgb & 0x00F) * 0x11);
}

}  // namespace

std::string Color::hexString() const { return std::string("#") + pair(red) + pair(green) + pair(blue); }

std::string Color::hexStringWithAlpha() const {
    std::string text = hexString();
    std::string alphaPair = pair(alpha);
    return alphaPair == "FF" ? text : text.insert(1, alphaPair);
}

std::optional<Color> colorFromText(std::string_view text) {
    if (!text.starts_with('#')) return {};
    std::string_view digits = text.substr(1);
    auto number = hexadecimal(digits);
    if (!number) return {};

    constexpr std::uint32_t opaque = 0xFF000000;
    std::uint32_t argb = 0;
    switch (digits.size()) {
        case 3:
            argb = opaque | widened(*number);
            break;
        case 6:
            argb = opaque | *number;
            break;
        case 8:
            argb = *number;
            break;
        default:
            return {};
    }
    return Color{component(argb, 16), component(argb, 8), component(argb, 0), component(argb, 24)};
}

}  // namespace vantix
