#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Ports/OwningThread.h"
#include "Platform/Values/Export.h"

#include <memory>

namespace vantix {

class NotificationCenter;

/// Where the application stands in its life, driven by the host, told to whoever observes the life-cycle
/// notifications. A call that changes nothing posts nothing. Main thread only.
class VANTIX_EXPORT ApplicationLifeCycle {
public:
    ApplicationLifeCycle(std::shared_ptr<NotificationCenter> notificationCenter, ApplicationState state);

    /// Starting up takes this state.
    ApplicationState state() const;

    /// In front, with the person's attention.
    void becomeActive();
    /// Still visible, without the person's attention.
    void resignActive();
    /// Out of sight. An active application resigns first.
    void enterBackground();
    /// About to end. Once; nothing is posted afterwards.
    void terminate();

private:
    void post(const char* name) const;

    OwningThread thread_;
    std::shared_ptr<NotificationCenter> notificationCenter_;
    ApplicationState state_;
    bool isTerminated_ = false;
};

}  // namespace vantix
