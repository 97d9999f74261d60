#pragma once

#include <memory>
#include <utility>

namespace vantix {

/// A shared pointer that several threads read and replace without waiting for one another.
///
/// It stands on the free functions because ThreadSanitizer takes the atomic shared pointer of GCC 12 for a race.
template <typename T>
class AtomicPointer {
public:
    AtomicPointer() = default;
    explicit AtomicPointer(std::shared_ptr<T> pointer) : pointer_(std::move(pointer)) {}

    std::shared_ptr<T> load() const { return std::atomic_load(&pointer_); }
    void store(std::shared_ptr<T> pointer) { std::atomic_store(&pointer_, std::move(pointer)); }
    /// Whether it still was `expected`, which otherwise becomes what it is; may fail without a reason.
    bool compareExchange(std::shared_ptr<T>& expected, std::shared_ptr<T> desired) {
        return std::atomic_compare_exchange_weak(&pointer_, &expected, std::move(desired));
    }

private:
    std::shared_ptr<T> pointer_;
};

}  // namespace vantix
