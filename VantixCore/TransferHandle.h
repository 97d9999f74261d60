#pragma once

#include <functional>
#include <utility>

namespace vantix {

/// Somebody's wish for the outcome of a transfer. Whoever drops it hears nothing more of the transfer, which itself
/// ends when nobody else waits for it.
///
/// Once the handle is gone, the completion is not called any more; only a call that another thread has begun before
/// runs to its end, and may still do so after the drop has returned. After the completion was called, dropping does
/// nothing. May be dropped on any thread, within the completion too; one thread at a time.
class [[nodiscard]] TransferHandle {
public:
    /// Of no transfer.
    TransferHandle() = default;
    explicit TransferHandle(std::function<void()> letGo) : letGo_(std::move(letGo)) {}
    ~TransferHandle() { drop(); }

    TransferHandle(TransferHandle&& other) noexcept : letGo_(std::exchange(other.letGo_, nullptr)) {}
    TransferHandle& operator=(TransferHandle&& other) noexcept {
        if (this == &other) return *this;
        drop();
        letGo_ = std::exchange(other.letGo_, nullptr);
        return *this;
    }

    /// From here on the transfer runs to its end, and its completion is called, whether or not a handle is kept.
    void detach() { letGo_ = nullptr; }

private:
    void drop() {
        if (auto letGo = std::exchange(letGo_, nullptr)) letGo();
    }

    std::function<void()> letGo_;
};

}  // namespace vantix
