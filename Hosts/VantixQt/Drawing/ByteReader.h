#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantix {

/// Reads bytes one after the other; beyond their end it reads zeros and remembers that it did.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    std::uint8_t byte() {
        if (bytes_.empty()) {
            isExhausted_ = true;
            return 0;
        }
        auto first = static_cast<std::uint8_t>(bytes_.front());
        bytes_.remove_prefix(1);
        return first;
    }

    void skip(std::size_t count) {
        if (count > bytes_.size()) isExhausted_ = true;
        bytes_.remove_prefix(std::min(count, bytes_.size()));
    }

    /// The most significant byte first.
    std::uint32_t number(int byteCount) {
        std::uint32_t value = 0;
        while (byteCount-- > 0) value = value << 8 | byte();
        return value;
    }

    /// The least significant byte first.
    std::uint32_t reversedNumber(int byteCount) {
        std::uint32_t value = 0;
        for (int at = 0; at < byteCount; ++at) value |= std::uint32_t{byte()} << (8 * at);
        return value;
    }

    std::string_view take(std::size_t count) {
        std::string_view taken = bytes_.substr(0, count);
        skip(count);
        return taken;
    }

    std::string_view rest() const { return bytes_; }
    bool isExhausted() const { return isExhausted_; }

private:
    std::string_view bytes_;
    bool isExhausted_ = false;
};

}  // namespace vantix
