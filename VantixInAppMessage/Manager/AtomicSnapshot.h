#pragma once

#include "Platform/Values/AtomicPointer.h"

#include <memory>
#include <utility>

namespace vantix {

/// An immutable value that several threads read and replace without waiting for one another.
template <typename T>
class AtomicSnapshot {
public:
    std::shared_ptr<const T> load() const { return value_.load(); }

    /// Replaces the value by a changed copy; `change` may run more than once when threads collide. Returns what was
    /// replaced.
    template <typename Change>
    std::shared_ptr<const T> update(Change change) {
        auto current = load();
        std::shared_ptr<const T> next;
        do {
            auto copy = std::make_shared<T>(*current);
            change(*copy);
            next = std::move(copy);
        } while (!value_.compareExchange(current, next));
        return current;
    }

private:
    AtomicPointer<const T> value_{std::make_shared<T>()};
};

}  // namespace vantix
