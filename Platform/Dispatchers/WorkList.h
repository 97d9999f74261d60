#pragma once

#include "Platform/Values/Export.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace vantix {

using Work = std::function<void()>;

/// A guarded list of work; threads take from its front. Usable from any thread.
class VANTIX_EXPORT WorkList {
public:
    /// False when the list is closed and the work refused.
    bool append(Work work);

    /// Waits for work; absent once the list is closed and empty.
    std::optional<Work> take();
    /// Absent when there is none by then, too.
    std::optional<Work> takeUntil(std::chrono::steady_clock::time_point deadline);
    /// What is there now.
    std::deque<Work> takeAll();

    /// From now on work is refused; what is there may still be taken.
    void close();

private:
    std::optional<Work> takeFront();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> works_;
    bool closed_ = false;
};

}  // namespace vantix
