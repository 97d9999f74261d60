#pragma once

#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "Platform/VirtualDispatcher.h"
#include "VantixCore/Vantix.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace vantix {

/// A core library of its own for each test, over real files and a real network.
template <typename SomeDispatcher = VirtualDispatcher>
class CoreFixture : public testing::Test {
protected:
    CoreFixture() { install(host()); }

    VantixHost host() {
        VantixHost host;
        host.dataDirectory = folder_.path();
        host.onRequest = [this](const SentRequest& request) {
            std::lock_guard lock(mutex_);
            sent_.push_back(request);
        };
        return host;
    }

    /// As a process that starts anew on the same data directory.
    void install(VantixHost host) {
        dispatcher_ = std::make_shared<SomeDispatcher>();
        Platform platform;
        platform.dispatcher = dispatcher_;
        platform.notificationCenter = std::make_shared<NotificationCenter>();
        platform.imageDecoder = decoder_;
        Platform::install(std::move(platform));
        Vantix::install(std::move(host));
    }

    std::vector<SentRequest> sent() {
        std::lock_guard lock(mutex_);
        return sent_;
    }

    TemporaryFolder folder_;
    std::shared_ptr<FakeImageDecoder> decoder_ = std::make_shared<FakeImageDecoder>();
    std::shared_ptr<SomeDispatcher> dispatcher_;

private:
    std::mutex mutex_;
    std::vector<SentRequest> sent_;
};

}  // namespace vantix
