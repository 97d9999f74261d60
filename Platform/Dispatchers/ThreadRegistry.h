#pragma once

#include "Platform/Values/Export.h"

#include <functional>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

namespace vantix {

/// Gives the calling thread the last part of a label ("com.vantix.store": "store") as its name in debuggers. Of one
/// that is longer than a thread's name may be the end is kept.
VANTIX_EXPORT void nameThisThread(std::string_view label);

/// Every thread that a dispatcher has started, for the final join. Usable from any thread.
class VANTIX_EXPORT ThreadRegistry {
public:
    /// Starts none once all were joined.
    void start(std::function<void()> body);
    void joinAll();

private:
    std::mutex mutex_;
    bool closed_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace vantix
