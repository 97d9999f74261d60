#pragma once

#include "Platform/Values/Export.h"

#include <any>
#include <functional>
#include <memory>
#include <string>

namespace vantix {

/// What is posted to whoever observes its name.
struct Notification {
    std::string name;
    /// Whatever the poster hands over; may be empty.
    std::any object;
};

/// Carries notifications inside the process. Usable from any thread; observers run on the thread that posts, in the
/// order in which they registered. An observer may add and end observations, its own too.
class VANTIX_EXPORT NotificationCenter {
public:
    /// Dropping it ends the observation; a call that is under way on another thread may still come to its end.
    class Observation {
    public:
        virtual ~Observation() = default;
    };

    NotificationCenter();
    ~NotificationCenter();

    [[nodiscard]] std::unique_ptr<Observation> addObserver(std::string name,
                                                           std::function<void(const Notification&)> handler);
    void post(const Notification& notification) const;

private:
    struct Registry;
    std::shared_ptr<Registry> registry_;
};

}  // namespace vantix
