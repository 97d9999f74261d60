#include "VantixQt/Drawing/WebPCodes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace vantix {

namespace {

constexpr int literals = 256, lengthCodes = 24, distanceCodes = 40;
constexpr std::size_t mostGroups = 65'536;

/// Reads the least significant bit first; zeros behind the end.
class BitReader {
public:
    explicit BitReader(std::string_view bytes) : bytes_(bytes) {}

    std::uint32_t bits(int count) {
        std::uint32_t value = 0;
        for (int at = 0; at < count; ++at) value |= bit() << at;
        return value;
    }

    std::uint32_t bit() {
        const std::size_t byte = position_ / 8;
        if (byte >= bytes_.size()) {
            isExhausted_ = true;
            return 0;
        }
        return static_cast<unsigned char>(bytes_[byte]) >> (position_++ % 8) & 1U;
    }

    bool isExhausted() const { return isExhausted_; }

private:
    std::string_view bytes_;
    std::size_t position_ = 0;
    bool isExhausted_ = false;
};

/// A prefix code, from the lengths of its words.
class PrefixCode {
public:
    PrefixCode() = default;
    explicit PrefixCode(const std::vector<int>& lengths) {
        for (int length : lengths) ++counts_[static_cast<std::size_t>(length)];
        counts_[0] = 0;
        for (int length = 1; length < static_cast<int>(counts_.size()); ++length) {
            for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
                if (lengths[symbol] == length) symbols_.push_back(static_cast<int>(symbol));
            }
        }
    }

    int read(BitReader& reader) const {
        // The only symbol of a code takes no bits.
        if (symbols_.size() < 2) return symbols_.empty() ? 0 : symbols_.front();
        std::size_t first = 0;
        std::uint32_t word = 0;
        for (std::uint32_t count : counts_) {
            if (word < count) return symbols_[first + word];
            first += count;
            word = (word - count) << 1 | reader.bit();
            if (reader.isExhausted()) break;
        }
        return 0;
    }

private:
    /// Of the words of each length.
    std::array<std::uint32_t, 17> counts_{};
    std::vector<int> symbols_;
};

PrefixCode readSimpleCode(BitReader& reader) {
    std::vector<int> lengths(literals);
    const bool hasTwoSymbols = reader.bit() != 0;
    const int bitsOfFirst = reader.bit() != 0 ? 8 : 1;
    lengths[reader.bits(bitsOfFirst)] = 1;
    if (hasTwoSymbols) lengths[reader.bits(8)] = 1;
    return PrefixCode(lengths);
}

/// The lengths of a code's words stand there in a code themselves.
PrefixCode readCodeOfLengths(BitReader& reader) {
    constexpr std::array<std::size_t, 19> order{17, 18, 0, 1, 2, 3, 4, 5, 16, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    std::vector<int> lengths(order.size());
    const std::size_t count = std::min(order.size(), std::size_t{reader.bits(4)} + 4);
    for (std::size_t at = 0; at < count; ++at) lengths[order[at]] = static_cast<int>(reader.bits(3));
    return PrefixCode(lengths);
}

PrefixCode readCode(BitReader& reader, int symbolCount) {
    if (reader.bit() != 0) return readSimpleCode(reader);
    const PrefixCode codeOfLengths = readCodeOfLengths(reader);
    std::int64_t left = symbolCount;
    if (reader.bit() != 0) {
        const int bitCount = 2 + 2 * static_cast<int>(reader.bits(3));
        left = 2 + std::int64_t{reader.bits(bitCount)};
    }
    std::vector<int> lengths;
    int previous = 8;
    while (std::ssize(lengths) < symbolCount && left-- > 0) {
        const int symbol = codeOfLengths.read(reader);
        if (symbol < 16) {
            lengths.push_back(symbol);
            if (symbol != 0) previous = symbol;
        } else {
            const std::uint32_t repetitions = symbol == 16   ? 3 + reader.bits(2)
                                              : symbol == 17 ? 3 + reader.bits(3)
                                                             : 11 + reader.bits(7);
            lengths.insert(lengths.end(), repetitions, symbol == 16 ? previous : 0);
        }
    }
    return PrefixCode(lengths);
}

std::int64_t readLength(BitReader& reader, int symbol) {
    if (symbol < 4) return symbol + 1;
    const int extraBits = (symbol - 2) / 2;
    return (std::int64_t{2 + symbol % 2} << extraBits) + reader.bits(extraBits) + 1;
}

int readCacheBits(BitReader& reader) { return reader.bit() != 0 ? static_cast<int>(reader.bits(4)) : 0; }

/// Reads a picture that stands within the picture, pixels that tell about others, and returns how many groups of codes
/// it would tell to be used: a pixel names one by its red and green.
std::int64_t readInnerPicture(BitReader& reader, std::int64_t pixelCount) {
    const int cacheBits = readCacheBits(reader);
    const int cached = cacheBits > 0 ? 1 << cacheBits : 0;
    const PrefixCode green = readCode(reader, literals + lengthCodes + cached);
    const PrefixCode red = readCode(reader, literals);
    const PrefixCode blue = readCode(reader, literals);
    const PrefixCode alpha = readCode(reader, literals);
    const PrefixCode distance = readCode(reader, distanceCodes);
    std::vector<bool> isNamed(mostGroups);
    while (pixelCount > 0 && !reader.isExhausted()) {
        const int symbol = green.read(reader);
        if (symbol < literals) {
            isNamed[static_cast<std::size_t>(red.read(reader) << 8 | symbol)] = true;
            blue.read(reader);
            alpha.read(reader);
            --pixelCount;
        } else if (symbol < literals + lengthCodes) {
            pixelCount -= readLength(reader, symbol - literals);
            readLength(reader, distance.read(reader));
        } else {
            --pixelCount;
        }
    }
    // Of few groups, those that no pixel names are read as well.
    constexpr std::int64_t few = 1000;
    const auto last = std::find(isNamed.rbegin(), isNamed.rend(), true);
    return std::max(std::count(isNamed.begin(), isNamed.end(), true), std::min(isNamed.rend() - last, few));
}

std::int64_t blocks(std::int64_t length, int bits) { return (length + (std::int64_t{1} << bits) - 1) >> bits; }

/// Libwebp reserves for each group the largest tables that five codes can need.
std::int64_t memoryForCodes(BitReader& reader, std::int64_t width, std::int64_t height) {
    enum Transform { predictor, color, subtractGreen, colorIndexing };
    std::array<bool, 4> hadTransform{};
    while (reader.bit() != 0) {
        const auto transform = static_cast<Transform>(reader.bits(2));
        const bool isDamaged = std::exchange(hadTransform[transform], true);
        if (isDamaged) return 0;
        if (transform == predictor || transform == color) {
            const int bits = static_cast<int>(reader.bits(3)) + 2;
            readInnerPicture(reader, blocks(width, bits) * blocks(height, bits));
        } else if (transform == colorIndexing) {
            const std::uint32_t colors = reader.bits(8) + 1;
            readInnerPicture(reader, colors);
            width = blocks(width, colors <= 2 ? 3 : colors <= 4 ? 2 : colors <= 16 ? 1 : 0);
        }
    }
    const int cacheBits = readCacheBits(reader);
    if (reader.bit() == 0) return 0;
    const int bits = static_cast<int>(reader.bits(3)) + 2;
    const std::int64_t groups = readInnerPicture(reader, blocks(width, bits) * blocks(height, bits));
    const std::int64_t tableEntries = 2956 + (std::int64_t{1} << cacheBits);
    constexpr std::int64_t bytesPerEntry = 4, bytesBesideTables = 568;
    return groups * (tableEntries * bytesPerEntry + bytesBesideTables);
}

}  // namespace

std::int64_t memoryForCodesOfVP8L(std::string_view payload) {
    BitReader reader(payload);
    reader.bits(8);
    const std::int64_t width = reader.bits(14) + 1, height = reader.bits(14) + 1;
    reader.bits(4);
    return memoryForCodes(reader, width, height);
}

std::int64_t memoryForCodesOfALPH(std::string_view payload, int width, int height) {
    BitReader reader(payload);
    const bool isCompressed = reader.bits(2) == 1;
    reader.bits(6);
    return isCompressed ? memoryForCodes(reader, width, height) : 0;
}

}  // namespace vantix
