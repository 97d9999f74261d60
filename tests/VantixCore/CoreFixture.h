#pragma once

#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/VantixCore/InstalledHost.h"

#include <gtest/gtest.h>

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantix {

/// A core library of its own for each test, over real files and a real network.
template <typename DispatcherKind = VirtualDispatcher>
class CoreFixture : public testing::Test {
protected:
    CoreFixture() { install(host()); }

    VantixHost host() {
        VantixHost host;
        host.dataDirectory = folder_.path();
        host.logSink = [this](const LogLine& line) {
            std::lock_guard lock(mutex_);
            if (line.level == LogLevel::error) errors_.push_back(line.message);
        };
        host.onRequest = [this](const SentRequest& request) {
            std::lock_guard lock(mutex_);
            sent_.push_back(request);
        };
        return host;
    }

    /// As a process that starts anew on the same data directory.
    void install(VantixHost host) {
        installed_.reset();
        installed_.emplace(std::move(host), std::make_shared<FakeImageDecoder>());
    }

    DispatcherKind& dispatcher() { return *installed_->dispatcher; }
    FaultyDisk& disk() { return *installed_->disk; }

    std::vector<SentRequest> sent() {
        std::lock_guard lock(mutex_);
        return sent_;
    }

    /// What was logged as an error since the last time.
    std::vector<std::string> takeErrors() {
        std::lock_guard lock(mutex_);
        return std::exchange(errors_, {});
    }

    TemporaryFolder folder_;

private:
    std::mutex mutex_;
    std::vector<SentRequest> sent_;
    std::vector<std::string> errors_;
    std::optional<InstalledHost<DispatcherKind>> installed_;
};

}  // namespace vantix
