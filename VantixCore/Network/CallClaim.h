#pragma once

#include <atomic>

namespace vantix {

/// Decides between the one call of a completion and its cancellation: whoever takes the claim first has it, the other
/// does nothing. Usable from any thread.
class CallClaim {
public:
    /// Whether nobody had taken it before.
    bool take() { return !isTaken_.exchange(true); }
    bool isTaken() const { return isTaken_; }

private:
    std::atomic<bool> isTaken_ = false;
};

}  // namespace vantix
