#pragma once

#include <memory>
#include <utility>

namespace vantix {

/// A block for a call that may outlive its owner. It holds the owner weakly, keeps it alive while it runs, and does
/// nothing once the owner is gone. `block` takes the owner by reference and then whatever the call brings.
template <typename Owner, typename Block>
auto whileAlive(std::weak_ptr<Owner> owner, Block block) {
    return [owner = std::move(owner), block = std::move(block)](auto&&... arguments) {
        if (auto alive = owner.lock()) block(*alive, std::forward<decltype(arguments)>(arguments)...);
    };
}

}  // namespace vantix
