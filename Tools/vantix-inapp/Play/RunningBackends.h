#pragma once

#include "Tools/vantix-inapp/Backend/Backend.h"

#include <memory>
#include <vector>

namespace vantix {

/// The back ends that a scenario has started; they end with this object, which outlives those that call them.
class RunningBackends {
public:
    /// What arrives there is not told: whoever sends it does. Throws BadInput when no port can be had.
    const Backend& start(const BackendOptions& options) {
        backends_.push_back(std::make_unique<Backend>(options, [](const std::string&) {}));
        return *backends_.back();
    }
    /// The one that was started last; null before.
    const Backend* latest() const { return backends_.empty() ? nullptr : backends_.back().get(); }

private:
    std::vector<std::unique_ptr<Backend>> backends_;
};

}  // namespace vantix
