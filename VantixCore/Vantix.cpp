#include "VantixCore/Vantix.h"

#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "VantixCore/FileUserDefaults.h"
#include "VantixCore/PerInstallation.h"
#include "VantixCore/VantixConstants.h"

namespace vantix {

namespace {

/// Never destroyed, so that threads may log until the very end of the process.
VantixHost& installedHost() {
    static auto* host = new VantixHost;
    return *host;
}

}  // namespace

void Vantix::install(VantixHost host) {
    installedHost() = std::move(host);
    // Reads the settings now, so that no later use waits for the disk.
    getSharedUserDefaults();
}

const VantixHost& Vantix::host() { return installedHost(); }

std::shared_ptr<SharedUserDefaults> Vantix::getSharedUserDefaults() {
    static auto& settings = *new PerInstallation<FileUserDefaults>;
    if (!host().appGroup || host().dataDirectory.empty()) return nullptr;
    return settings.get();
}

void Vantix::captureEvent(std::string name, std::optional<Dictionary> attributes) {
    auto event = std::make_shared<const EventProtocol>(EventProtocol{std::move(name), std::move(attributes)});
    Platform::current().notificationCenter->post({VantixNotification::didCaptureInAppTrigger, std::move(event)});
}

}  // namespace vantix
