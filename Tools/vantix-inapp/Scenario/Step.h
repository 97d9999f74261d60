#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "Platform/Disk/FaultyDisk.h"
#include "Platform/Ports/Application.h"
#include "Platform/Ports/Clock.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/Value.h"
#include "Tools/vantix-inapp/Backend/Backend.h"
#include "VantixPushNotification/NotificationCore.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantix {

/// Keeps the clock, which counts nanoseconds, from running over.
inline constexpr std::chrono::duration<double> longestWait{1e9};

/// The steps of a scenario, as they are written in its file. Absent members were not given.
namespace step {

/// A silent push; a campaign is one, too.
struct Push {
    Dictionary dictionary;
};
struct Deliver {
    std::optional<std::vector<VantixNotificationPayload>> notifications;
};
/// A payload for the listener itself, past the push library.
struct Payload {
    Dictionary dictionary;
};
struct Event {
    std::string name;
    std::optional<Dictionary> attributes;
};
struct LifeCycle {
    std::string notification;
};
struct SetScene {
    bool inForeground = true;
};
struct SetPushAllowed {
    bool allowed = true;
};
struct SetCustomer {
    std::optional<std::string> customerId;
};
/// At most `longestWait`, as all waits of a scenario together.
struct Wait {
    Duration duration{0};
};
struct Tap {
    std::optional<Point> point;
    std::optional<Role> role;
    std::optional<std::string> label;
    std::optional<int> index;
};
struct Scroll {
    double points = 0;
};
struct Dismiss {};
struct ButtonAction {};
struct LogOut {};
struct Sync {
    std::string cuID;
};
struct Restart {
    ApplicationState applicationState = ApplicationState::inactive;
};
struct StartBackend {
    BackendOptions options;
};
struct SetDiskFault {
    DiskFault fault = DiskFault::none;
};
struct PrintElements {};
struct PrintStore {};
struct PrintQueues {};
struct Screenshot {
    std::filesystem::path name;
};

}  // namespace step

using Step =
    std::variant<step::Push, step::Deliver, step::Payload, step::Event, step::LifeCycle, step::SetScene,
                 step::SetPushAllowed, step::SetCustomer, step::Wait, step::Tap, step::Scroll, step::Dismiss,
                 step::ButtonAction, step::LogOut, step::Sync, step::Restart, step::StartBackend, step::SetDiskFault,
                 step::PrintElements, step::PrintStore, step::PrintQueues, step::Screenshot>;

}  // namespace vantix
