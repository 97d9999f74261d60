#include "DeclarativeUI/Layout/LayoutMemory.h"

namespace vantix {

namespace {

constexpr std::size_t goldenRatio = 0x9e3779b97f4a7c15ULL;

/// Spreads the bits: keys are pointers and lengths, which differ in few of them.
std::size_t mix(std::size_t seed, std::size_t hash) {
    std::size_t mixed = (seed ^ hash) * goldenRatio;
    return mixed ^ (mixed >> 32);
}

std::size_t hashLength(const std::optional<double>& length) {
    return length ? std::hash<double>{}(*length) : goldenRatio;
}

}  // namespace

std::size_t LayoutMemory::KeyHash::operator()(const Key& key) const {
    auto hash = mix(std::hash<const void*>{}(key.element), std::hash<const void*>{}(key.environment));
    return mix(mix(hash, hashLength(key.proposal.width)), hashLength(key.proposal.height));
}

const ElementPointer& LayoutMemory::content(const Element& reader, Size size,
                                            const std::function<ElementPointer()>& make) {
    auto [known, isNew] = contents_.try_emplace({&reader, {size.width, size.height}});
    if (isNew) known->second = make();
    return known->second;
}

const Environment& LayoutMemory::environment(const Element& modifier, const Environment& outer,
                                             const std::function<void(Environment&)>& change) {
    auto& known = environments_[{&modifier, &outer}];
    if (!known) {
        auto inner = std::make_unique<Environment>(outer);
        change(*inner);
        known = std::move(inner);
    }
    return *known;
}

}  // namespace vantix
