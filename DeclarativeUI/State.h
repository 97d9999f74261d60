#pragma once

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/OwningThread.h"

#include <functional>
#include <memory>
#include <utility>

namespace vantix {

/// A piece of view state: a slot that is made once with its template and survives every redraw. Copies share the slot.
/// Reading it while a body is evaluated ties it to the hosted root; a change then asks that root for one redraw.
/// Main thread only.
template <typename T>
class State {
public:
    State(T initial = {}) : slot_(std::make_shared<Slot>()) { slot_->value = std::move(initial); }

    const T& get() const {
        if (HostedView* root = HostedView::current()) slot_->root = root->weak_from_this();
        return slot_->value;
    }

    void set(T value) const {
        slot_->thread.assertCurrent("State::set");
        if (slot_->value == value) return;
        slot_->value = std::move(value);
        if (auto root = slot_->root.lock()) root->invalidate();
    }

private:
    struct Slot {
        T value{};
        OwningThread thread;
        std::weak_ptr<HostedView> root;
    };
    std::shared_ptr<Slot> slot_;
};

/// Read and write access to state that somebody else owns.
template <typename T>
struct Binding {
    std::function<T()> get;
    std::function<void(T)> set;

    Binding(const State<T>& state)
        : get([state] { return state.get(); }), set([state](T value) { state.set(std::move(value)); }) {}
};

}  // namespace vantix
