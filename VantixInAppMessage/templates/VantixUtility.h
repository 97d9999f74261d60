#pragma once

#include "Platform/Values/Value.h"

namespace vantix {

class VantixUtility {
public:
    /// Whether both values are hashable and equal.
    static bool equals(const Value& a, const Value& b) { return a.isHashable() && b.isHashable() && a == b; }
};

}  // namespace vantix
