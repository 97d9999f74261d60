#pragma once

#include "Platform/Disk/FaultyDisk.h"
#include "Platform/Disk/FileDisk.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/NotificationCenter.h"
#include "Platform/Ports/Platform.h"
#include "VantixCore/Vantix.h"
#include "VantixCore/VantixNetworkManager.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>
#include <utility>

namespace vantix {

/// The platform and the host of one test, for as long as it lives: queues of a kind of its own, a disk that may fail,
/// nothing to draw on.
template <typename DispatcherKind>
class InstalledHost {
public:
    explicit InstalledHost(VantixHost host, std::shared_ptr<ImageDecoder> imageDecoder = {}) {
        Platform platform;
        platform.dispatcher = dispatcher;
        platform.notificationCenter = std::make_shared<NotificationCenter>();
        platform.imageDecoder = std::move(imageDecoder);
        platform.disk = disk;
        Platform::install(std::move(platform));
        Vantix::install(std::move(host));
    }
    ~InstalledHost() {
        // Threads read what is installed, so they end before it goes.
        if constexpr (requires { dispatcher->shutDown(); }) {
            VantixNetworkManager::cancelAll();
            dispatcher->shutDown();
        }
        Platform idle;
        idle.dispatcher = std::make_shared<DispatcherKind>();
        Platform::install(std::move(idle));
        Vantix::install({});
    }

    std::shared_ptr<DispatcherKind> dispatcher = std::make_shared<DispatcherKind>();
    std::shared_ptr<FaultyDisk> disk = std::make_shared<FaultyDisk>(std::make_shared<FileDisk>());
};

}  // namespace vantix
