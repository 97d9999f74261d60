#pragma once

#include "Platform/Values/Color.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace vantix::fuzz {

/// What an input chooses, byte by byte; nothing but zeros once it is used up.
class Choices {
public:
    explicit Choices(std::string_view bytes) : rest_(bytes) {}

    bool isEmpty() const { return rest_.empty(); }
    std::uint8_t byte() {
        if (rest_.empty()) return 0;
        auto first = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return first;
    }
    int below(int limit) { return byte() % limit; }
    bool flag() { return below(2) == 1; }
    /// A case of an enumeration that has so many.
    template <typename Case>
    Case word(int count) {
        return static_cast<Case>(below(count));
    }
    template <typename Choice, std::size_t count>
    Choice of(const std::array<Choice, count>& all) {
        return all[byte() % count];
    }

    /// As many bytes as the next one says: often no UTF-8.
    std::string text() {
        std::string text(rest_.substr(0, byte()));
        rest_.remove_prefix(std::min(text.size(), rest_.size()));
        return text;
    }
    Color color() { return {below(3) / 2.0, below(3) / 2.0, below(3) / 2.0, below(3) / 2.0}; }
    /// From 0 to 63.75 points.
    double length() { return byte() / 4.0; }
    /// The same, or, one time in eight, what no layout should be given.
    double anyLength() {
        constexpr double huge = 1e300, endless = std::numeric_limits<double>::infinity();
        constexpr std::array odd{-1.0, -1e9, huge, -huge, endless, -endless, std::numeric_limits<double>::quiet_NaN()};
        return below(8) == 7 ? of(odd) : length();
    }
    double coordinate(double extent) { return (byte() - 16) / 224.0 * extent; }

private:
    std::string_view rest_;
};

}  // namespace vantix::fuzz
