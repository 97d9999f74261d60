#pragma once

#include "Platform/Ports/Clock.h"

#include <memory>

namespace vantix {

class Dispatcher;

/// How time passes while a scenario is played. Main thread only.
class Pace {
public:
    /// From here on time stands still for whoever still holds the dispatcher; a live one joins its threads.
    virtual ~Pace() = default;

    virtual std::shared_ptr<Dispatcher> dispatcher() const = 0;
    /// Between two steps: does what is to be done before the next one.
    virtual void settle() = 0;
    virtual void wait(Duration duration) = 0;

    /// Time stands still but for `wait`; every step's work, all it leads to included, comes to its end before the next.
    static std::unique_ptr<Pace> makeVirtual();
    /// Real time; work of other threads is not waited for.
    static std::unique_ptr<Pace> makeLive();
};

}  // namespace vantix
