#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/DispatchGroup.h"
#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Export.h"

#include <memory>
#include <string>

namespace vantix {

/// Makes queues and keeps time for them: real threads (ThreadedDispatcher) or one piece of work at a time in virtual
/// time (VirtualDispatcher). Usable from any thread. Queues and clock that are handed out by reference live as long as
/// the dispatcher.
class VANTIX_EXPORT Dispatcher {
public:
    virtual ~Dispatcher() = default;

    /// Runs on the host's main thread, whenever the host drains it.
    virtual DispatchQueue& mainQueue() = 0;
    /// Concurrent; for work that may block. Grows to 16 threads while its threads wait.
    virtual DispatchQueue& utilityQueue() = 0;
    /// A queue of its own that runs one piece of work at a time.
    virtual std::shared_ptr<DispatchQueue> makeSerialQueue(std::string label, QualityOfService qos) = 0;
    virtual std::shared_ptr<DispatchGroup> makeGroup() = 0;
    virtual const Clock& clock() const = 0;
};

}  // namespace vantix
