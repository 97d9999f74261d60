#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace vantix {

/// The time that a validity names: a date ("2026-01-31", its end), a date and a time (blank or T between, seconds and
/// an offset from UTC if any), or seconds since 1970. Absent for any other text.
std::optional<std::chrono::system_clock::time_point> validityTime(std::string_view text);

}  // namespace vantix
