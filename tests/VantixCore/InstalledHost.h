#pragma once

#include "Platform/Dispatcher.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "VantixCore/Vantix.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace vantix {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "vantix-core-XXXXXX";
        path_ = ::mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The platform and the host of one test, for as long as it lives: queues of a kind of its own, nothing to draw on.
template <typename DispatcherKind>
class InstalledHost {
public:
    explicit InstalledHost(VantixHost host) {
        installPlatform();
        Vantix::install(std::move(host));
    }
    ~InstalledHost() {
        Vantix::install({});
        Platform::install({});
    }

    /// As at the start of another process: work that was under way is dropped.
    void restartPlatform() {
        Platform::install({});
        dispatcher = std::make_shared<DispatcherKind>();
        installPlatform();
    }

    std::shared_ptr<DispatcherKind> dispatcher = std::make_shared<DispatcherKind>();

private:
    void installPlatform() {
        Platform platform;
        platform.dispatcher = dispatcher;
        platform.notificationCenter = std::make_shared<NotificationCenter>();
        Platform::install(std::move(platform));
    }
};

}  // namespace vantix
