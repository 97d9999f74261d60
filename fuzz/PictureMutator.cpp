#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <zlib.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t capacity);

namespace {

/// The four bytes at a place, the most significant first.
std::uint32_t number(const std::uint8_t* at) {
    return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 | at[3];
}

}  // namespace

/// Changes a picture as the fuzzer does, and makes the checksums of a PNG's chunks right again: without that no change
/// would come further than to them.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t capacity, unsigned) {
    constexpr std::size_t signature = 8, lengthAndType = 8, checksum = 4;
    size = LLVMFuzzerMutate(data, size, capacity);
    if (size < signature || data[1] != 'P') return size;
    for (std::size_t at = signature; at + lengthAndType + checksum <= size;) {
        std::size_t length = std::min<std::size_t>(number(data + at), size - at - lengthAndType - checksum);
        std::uint8_t* end = data + at + lengthAndType + length;
        auto right = static_cast<std::uint32_t>(crc32_z(0, data + at + 4, length + 4));
        for (int byte = 0; byte < 4; ++byte) end[byte] = static_cast<std::uint8_t>(right >> (24 - 8 * byte));
        at += lengthAndType + length + checksum;
    }
    return size;
}
