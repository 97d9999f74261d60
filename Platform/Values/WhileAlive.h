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

/// The same with a second block for a call that comes once the owner is gone; it takes what the call brings.
template <typename Owner, typename Block, typename Otherwise>
auto whileAlive(std::weak_ptr<Owner> owner, Block block, Otherwise otherwise) {
    return [owner = std::move(owner), block = std::move(block), otherwise = std::move(otherwise)](auto&&... arguments) {
        auto alive = owner.lock();
        return alive ? block(*alive, std::forward<decltype(arguments)>(arguments)...)
                     : otherwise(std::forward<decltype(arguments)>(arguments)...);
    };
}

}  // namespace vantix
