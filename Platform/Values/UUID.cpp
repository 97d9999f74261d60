#include "Platform/Values/UUID.h"

#include <array>
#include <random>

namespace vantix {

std::string makeUUID() {
    thread_local std::random_device entropy;
    std::array<unsigned, 16> bytes{};
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        unsigned word = entropy();
        for (std::size_t byte = 0; byte < 4; ++byte) bytes[at + byte] = (word >> (8 * byte)) & 0xff;
    }
    bytes[6] = (bytes[6] & 0x0f) | 0x40;  // version 4
    bytes[8] = (bytes[8] & 0x3f) | 0x80;  // the standard's variant

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (at == 4 || at == 6 || at == 8 || at == 10) text += '-';
        text += digits[bytes[at] >> 4];
        text += digits[bytes[at] & 15];
    }
    return text;
}

}  // namespace vantix
