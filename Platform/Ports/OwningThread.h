#pragma once

#include "Platform/Values/Export.h"

#include <string_view>
#include <thread>

namespace vantix {

/// The thread that an object belongs to: the one that made it. For objects of the main thread that know no platform.
class VANTIX_EXPORT OwningThread {
public:
    /// Stops the process when the caller is on another thread; the message names the operation and where it ran.
    void assertCurrent(std::string_view operation) const;

private:
    std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace vantix
