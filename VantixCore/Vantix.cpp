#include "VantixCore/Vantix.h"

#include "Platform/Dispatcher.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "VantixCore/FileUserDefaults.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixCore.h"

#include <mutex>

namespace vantix {

namespace {

/// Never destroyed, so that threads may log until the very end of the process.
VantixHost& installedHost() {
    static auto* host = new VantixHost;
    return *host;
}

/// The settings of the installed host, made anew when another host or platform is installed.
class SharedSettings {
public:
    std::shared_ptr<SharedUserDefaults> of(const std::filesystem::path& directory,
                                           const std::shared_ptr<Dispatcher>& dispatcher) {
        std::lock_guard lock(mutex_);
        if (!settings_ || directory != directory_ || dispatcher != dispatcher_.lock()) {
            auto writer =
                dispatcher->makeSerialQueue(VantixDomainFactory::getDomain("settings"), QualityOfService::utility);
            settings_ = std::make_shared<FileUserDefaults>(directory / "settings.json", std::move(writer));
            directory_ = directory;
            dispatcher_ = dispatcher;
        }
        return settings_;
    }

private:
    std::mutex mutex_;
    std::shared_ptr<FileUserDefaults> settings_;
    std::filesystem::path directory_;
    std::weak_ptr<Dispatcher> dispatcher_;
};

}  // namespace

void Vantix::install(VantixHost host) {
    installedHost() = std::move(host);
    // Reads the settings now, so that no later use waits for the disk.
    getSharedUserDefaults();
}

const VantixHost& Vantix::host() { return installedHost(); }

std::shared_ptr<SharedUserDefaults> Vantix::getSharedUserDefaults() {
    static auto* settings = new SharedSettings;
    if (!host().appGroup || host().dataDirectory.empty()) return nullptr;
    return settings->of(host().dataDirectory, Platform::current().dispatcher);
}

void Vantix::captureEvent(std::string name, std::optional<Dictionary> attributes) {
    auto event = std::make_shared<const EventProtocol>(EventProtocol{std::move(name), std::move(attributes)});
    Platform::current().notificationCenter->post({VantixNotification::didCaptureInAppTrigger, std::move(event)});
}

}  // namespace vantix
