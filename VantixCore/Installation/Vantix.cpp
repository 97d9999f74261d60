#include "VantixCore/Vantix.h"

#include "Platform/Ports/MainThread.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Settings/FileUserDefaults.h"
#include "VantixCore/VantixConstants.h"

#include <utility>

namespace vantix {

void Vantix::install(VantixHost host) {
    assertMainThread("Vantix::install");
    VantixLogger::setSink(host.logSink);
    Installation::replace(std::make_shared<Installation>(std::move(host)));
}

void Vantix::endDiskUse(Duration within) { Installation::current()->endDiskUse(within); }

void Vantix::uninstall() {
    assertMainThread("Vantix::uninstall");
    Installation::replace(nullptr);
    VantixLogger::setSink({});
}

std::shared_ptr<const VantixHost> Vantix::host() { return Installation::current()->host(); }

std::shared_ptr<SharedUserDefaults> Vantix::getSharedUserDefaults() { return Installation::current()->settings(); }

void Vantix::captureEvent(std::string name, std::optional<Dictionary> attributes) {
    auto event = std::make_shared<const EventProtocol>(EventProtocol{std::move(name), std::move(attributes)});
    Platform::current()->notificationCenter->post({VantixNotification::didCaptureInAppTrigger, std::move(event)});
}

std::shared_ptr<void> Vantix::sharedObject(std::type_index type, const std::function<std::shared_ptr<void>()>& make) {
    return Installation::current()->sharedObject(type, make);
}

}  // namespace vantix
