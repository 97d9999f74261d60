#pragma once

#include "Platform/Platform.h"
#include "VantixCore/Vantix.h"

#include <filesystem>
#include <memory>
#include <mutex>

namespace vantix {

/// One T for as long as the same platform and data directory are installed, made at first use. Usable from any thread.
/// Who still holds the T of an earlier installation may go on using it.
template <typename T>
class PerInstallation {
public:
    std::shared_ptr<T> get() {
        const std::shared_ptr<Dispatcher>& dispatcher = Platform::current().dispatcher;
        const std::filesystem::path& directory = Vantix::host().dataDirectory;
        std::lock_guard lock(mutex_);
        if (!object_ || dispatcher_.lock() != dispatcher || directory_ != directory) {
            object_ = std::make_shared<T>();
            dispatcher_ = dispatcher;
            directory_ = directory;
        }
        return object_;
    }

private:
    std::mutex mutex_;
    std::weak_ptr<Dispatcher> dispatcher_;
    std::filesystem::path directory_;
    std::shared_ptr<T> object_;
};

}  // namespace vantix
