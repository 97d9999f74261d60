#pragma once

#include "Platform/Values/Value.h"

#include <cstdint>
#include <string>

namespace vantix {

/// How the back end says that a call came out.
struct Status {
    bool success = false;
    std::int64_t code = 0;
    std::string message;

    bool operator==(const Status&) const = default;

    /// From the keys "success", "code" and "message". Never fails: the first one that is missing or of a wrong kind is
    /// logged, and keeps its default together with those after it.
    static Status generate(const Dictionary& dictionary);
};

}  // namespace vantix
