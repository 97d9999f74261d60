#pragma once

#include "DeclarativeUI/Layout/Element.h"
#include "Platform/Ports/TextMeasurer.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

namespace vantix {

/// What layout has learnt of one evaluated tree; kept as long as the tree, so that scrolling measures nothing anew.
/// Each question is answered by its `make` once.
class LayoutMemory {
public:
    /// The size that the element answers to the proposal.
    template <typename Make>
    Size size(const Element& element, const Environment& environment, const Proposal& proposal, Make make) {
        Key key{&element, &environment, proposal};
        if (auto known = sizes_.find(key); known != sizes_.end()) return known->second;
        return sizes_.emplace(key, make()).first->second;
    }
    /// The text of the element, broken for a width.
    template <typename Make>
    const TextLayout& text(const Element& element, const Environment& environment, double width, Make make) {
        auto [known, isNew] = texts_.try_emplace({&element, &environment, {width, {}}});
        if (isNew) known->second = make();
        return known->second;
    }
    /// What a geometry reader makes of a size.
    const ElementPointer& content(const Element& reader, Size size, const std::function<ElementPointer()>& make);
    /// The environment inside a modifier; the same object for the same question.
    const Environment& environment(const Element& modifier, const Environment& outer,
                                   const std::function<void(Environment&)>& change);

    /// For a layout in which pictures may answer other sizes than before.
    void forgetSizes() { sizes_.clear(); }

private:
    struct Key {
        const Element* element;
        const Environment* environment;
        Proposal proposal;

        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    std::unordered_map<Key, Size, KeyHash> sizes_;
    std::unordered_map<Key, TextLayout, KeyHash> texts_;
    std::map<std::pair<const Element*, std::pair<double, double>>, ElementPointer> contents_;
    std::map<std::pair<const Element*, const Environment*>, std::unique_ptr<const Environment>> environments_;
};

}  // namespace vantix
