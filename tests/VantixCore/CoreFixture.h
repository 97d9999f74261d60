#pragma once

#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixCore/VantixConfiguration.h"
#include "tests/Support/FakeImageDecoder.h"
#include "tests/Support/Recorder.h"
#include "tests/VantixCore/InstalledHost.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace vantix {

inline std::shared_ptr<VantixConfiguration> configurationFor(const std::string& baseURL, const std::string& pin = {},
                                                             const std::string& token = {}) {
    auto configuration = std::make_shared<VantixConfiguration>();
    configuration->base = baseURL;
    configuration->keyHash = pin;
    configuration->token = token;
    return configuration;
}

/// A core library of its own for each test, over real files and a real network.
template <typename DispatcherKind = VirtualDispatcher>
class CoreFixture : public testing::Test {
protected:
    CoreFixture() { install(host()); }

    VantixHost host() { return recorder_.host(folder_.path()); }

    /// As a process that starts anew on the same data directory.
    void install(VantixHost host) {
        installed_.reset();
        installed_.emplace(std::move(host), std::make_shared<FakeImageDecoder>());
    }

    DispatcherKind& dispatcher() { return *installed_->dispatcher; }
    FaultyDisk& disk() { return *installed_->disk; }
    std::vector<std::string> takeErrors() { return recorder_.takeErrors(); }

    TemporaryFolder folder_;

private:
    Recorder recorder_;
    std::optional<InstalledHost<DispatcherKind>> installed_;
};

}  // namespace vantix
