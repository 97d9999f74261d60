#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Value.h"
#include "VantixCore/SharedUserDefaults.h"
#include "VantixCore/VantixHost.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>

namespace vantix {

/// The process-wide face of the core library towards its host.
class VANTIX_EXPORT Vantix {
public:
    /// Once, at start, on the main thread, after Platform::install. Everything that lives once per program (settings,
    /// network, images, stores, reports) belongs to this installation and is made at its first use. A later call
    /// replaces all of it at once; who still holds a part of the earlier installation may go on using that part.
    static void install(VantixHost host);
    /// For a program that wants to end, before it shuts its dispatcher down: what waits for the disk may go on for that
    /// long; from then on it fails at once instead of being done, and completions say so. What was confirmed stays.
    /// Any thread.
    static void endDiskUse(Duration within = seconds(2));
    /// Lets go of the installation, once everything that could still ask for it has ended: stores are closed, lines of
    /// the log go to standard error again. Main thread.
    static void uninstall();
    /// What was installed. Asking before that is a programming error and stops the process. Any thread.
    static std::shared_ptr<const VantixHost> host();

    /// Null when the app group is not set up.
    static std::shared_ptr<SharedUserDefaults> getSharedUserDefaults();

    /// Tells the in-app module of an event, by the notification `didCaptureInAppTrigger`, on the calling thread.
    static void captureEvent(std::string name, std::optional<Dictionary> attributes = {});

    /// The one T of this installation, made at first use: for what another library keeps once per program. Any thread.
    template <typename T>
    static std::shared_ptr<T> shared() {
        auto make = []() -> std::shared_ptr<void> { return std::make_shared<T>(); };
        return std::static_pointer_cast<T>(sharedObject(typeid(T), make));
    }

private:
    static std::shared_ptr<void> sharedObject(std::type_index type, const std::function<std::shared_ptr<void>()>& make);
};

}  // namespace vantix
