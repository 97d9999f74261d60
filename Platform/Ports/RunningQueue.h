#pragma once

#include "Platform/Values/Export.h"

#include <string_view>

namespace vantix {

class DispatchQueue;

/// For as long as it lives, the thread that made it runs work of one queue. Dispatchers make one around what they run.
class VANTIX_EXPORT RunningQueue {
public:
    /// `identity` tells queues apart; the label must outlive this object.
    RunningQueue(const void* identity, std::string_view label);
    ~RunningQueue();
    RunningQueue(const RunningQueue&) = delete;
    RunningQueue& operator=(const RunningQueue&) = delete;

    /// Whether the calling thread runs work of that queue.
    static bool is(const void* identity);
    /// The label of the queue whose work the calling thread runs; otherwise the thread's own, or "no queue".
    static std::string_view label();
    /// What the calling thread is from now on while it runs work of no queue. The label must outlive the thread.
    static void setThreadLabel(std::string_view label);

private:
    const void* outerIdentity_;
    std::string_view outerLabel_;
};

/// Stops the process when the caller does not run on the queue. The message names the operation, the queue that it
/// belongs to and the one that it ran on.
VANTIX_EXPORT void assertOnQueue(const DispatchQueue& queue, std::string_view operation);
/// Stops the process when the caller runs on the queue. The message names the operation and the queue.
VANTIX_EXPORT void assertNotOnQueue(const DispatchQueue& queue, std::string_view operation);

}  // namespace vantix
