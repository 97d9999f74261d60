#pragma once

#include "Platform/Values/Export.h"

#include <chrono>

namespace vantix {

using Duration = std::chrono::nanoseconds;

/// Turns a field that is named in seconds into a duration.
constexpr Duration seconds(double value) {
    return std::chrono::duration_cast<Duration>(std::chrono::duration<double>(value));
}

/// Time that only moves forward. Usable from any thread.
class VANTIX_EXPORT Clock {
public:
    virtual ~Clock() = default;

    /// The time since the clock was made.
    virtual Duration now() const = 0;
};

}  // namespace vantix
