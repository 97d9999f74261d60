#pragma once

#include "Platform/Values/Export.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

namespace vantix {

/// Gives the calling thread the last part of a label ("com.vantix.store": "store") as its name in debuggers. Of one
/// that is longer than a thread's name may be the end is kept.
VANTIX_EXPORT void nameThisThread(std::string_view label);

/// The threads that a dispatcher has started, for the final join. Usable from any thread.
class VANTIX_EXPORT ThreadRegistry {
public:
    /// Starts none once all were joined. Joins those that have ended, so that their stacks are freed.
    void start(std::function<void()> body);
    void joinAll();

private:
    struct Started {
        std::shared_ptr<std::atomic<bool>> hasEnded = std::make_shared<std::atomic<bool>>(false);
        std::thread thread;
    };

    std::mutex mutex_;
    bool closed_ = false;
    std::vector<Started> threads_;
};

}  // namespace vantix
