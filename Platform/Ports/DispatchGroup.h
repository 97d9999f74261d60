#pragma once

#include "Platform/Values/Export.h"

namespace vantix {

/// Counts work under way, so that a thread can wait for its end. Usable from any thread.
class VANTIX_EXPORT DispatchGroup {
public:
    virtual ~DispatchGroup() = default;

    virtual void enter() = 0;
    /// Once for each `enter`.
    virtual void leave() = 0;
    /// Blocks until every `enter` has been left. Never on the main thread.
    virtual void wait() = 0;
};

}  // namespace vantix
