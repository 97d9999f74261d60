#pragma once

#include <cstdint>

namespace vantix {

/// Of the database files that this program makes, in their `user_version`. Files of version 1.0 say 0 and look the
/// same. A change that this program's predecessors could not live with raises it; what only adds to new files does not.
inline constexpr std::int64_t storeVersion = 1;

}  // namespace vantix
