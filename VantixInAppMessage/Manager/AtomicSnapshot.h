#pragma once

#include <memory>
#include <utility>

namespace vantix {

/// An immutable value that several threads read and replace without waiting for one another.
template <typename T>
class AtomicSnapshot {
public:
    std::shared_ptr<const T> load() const { return std::atomic_load(&value_); }

    void replace(T value) {
        std::atomic_store(&value_, std::shared_ptr<const T>(std::make_shared<T>(std::move(value))));
    }

    /// Replaces the value by a changed copy; `change` may run more than once when threads collide.
    template <typename Change>
    void update(Change change) {
        auto current = load();
        std::shared_ptr<const T> next;
        do {
            auto copy = std::make_shared<T>(*current);
            change(*copy);
            next = std::move(copy);
        } while (!std::atomic_compare_exchange_weak(&value_, &current, next));
    }

private:
    std::shared_ptr<const T> value_ = std::make_shared<T>();
};

}  // namespace vantix
