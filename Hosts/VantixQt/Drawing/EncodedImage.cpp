#include "VantixQt/Drawing/EncodedImage.h"

#include <algorithm>
#include <cstdint>
#include <zlib.h>

namespace vantix::EncodedImage {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n"sv;

/// Reads bytes one after the other; beyond their end it reads zeros and remembers that it did.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

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

bool isIntactPNG(std::string_view bytes) {
    Reader reader(bytes);
    reader.skip(pngSignature.size());
    std::string_view type;
    while (type != "IEND"sv) {
        std::uint32_t length = reader.number(4);
        std::string_view typeAndData = reader.take(std::size_t{length} + 4);
        std::uint32_t checksum = reader.number(4);
        if (reader.isExhausted()) return false;
        auto actual = crc32_z(0, reinterpret_cast<const Bytef*>(typeAndData.data()), typeAndData.size());
        if (checksum != actual) return false;
        bool isFirst = type.empty();
        type = typeAndData.substr(0, 4);
        if (isFirst && type != "IHDR"sv) return false;
    }
    return true;
}

/// Walks the segments to the picture's data, within which only the end marker can read as one.
bool isIntactJPEG(std::string_view bytes) {
    constexpr std::uint8_t startOfScan = 0xDA;
    Reader reader(bytes);
    reader.skip("\xFF\xD8"sv.size());
    while (!reader.isExhausted()) {
        if (reader.byte() != 0xFF) return false;
        std::uint8_t marker = reader.byte();
        while (marker == 0xFF) marker = reader.byte();
        std::uint32_t length = reader.number(2);
        if (length < 2) return false;
        reader.skip(length - 2);
        if (marker == startOfScan) return reader.rest().find("\xFF\xD9"sv) != std::string_view::npos;
    }
    return false;
}

/// Whether a JPEG has one scan, in which all colours stand side by side.
bool hasOneScan(std::string_view bytes) {
    constexpr std::uint8_t baseline = 0xC0, extended = 0xC1, startOfScan = 0xDA;
    Reader reader(bytes);
    reader.skip("\xFF\xD8"sv.size());
    std::optional<char> colorCount;
    while (!reader.isExhausted()) {
        std::uint8_t marker = reader.byte();
        while (marker == 0xFF) marker = reader.byte();
        std::string_view segment = reader.take(std::max(reader.number(2), 2U) - 2);
        if (marker == startOfScan) return colorCount && segment.starts_with(*colorCount);
        if ((marker == baseline || marker == extended) && segment.size() > 5) colorCount = segment[5];
    }
    return false;
}

std::size_t colorTableSize(std::uint8_t flags) {
    constexpr std::uint8_t hasColorTable = 0x80;
    return (flags & hasColorTable) != 0 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

void skipSubBlocks(Reader& reader) {
    while (std::uint8_t length = reader.byte()) reader.skip(length);
}

bool isIntactGIF(std::string_view bytes) {
    Reader reader(bytes);
    reader.skip("GIF89a"sv.size() + 4);
    std::size_t globalColorTable = colorTableSize(reader.byte());
    reader.skip(2 + globalColorTable);
    for (std::uint8_t block = reader.byte(); block == '!'; block = reader.byte()) {
        reader.skip(1);
        skipSubBlocks(reader);
        if (reader.isExhausted()) return false;
    }
    reader.skip(8);
    std::size_t localColorTable = colorTableSize(reader.byte());
    reader.skip(localColorTable + 1);
    skipSubBlocks(reader);
    return !reader.isExhausted();
}

}  // namespace

std::optional<Format> format(std::string_view bytes) {
    if (bytes.starts_with(pngSignature)) return Format::png;
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return Format::jpeg;
    if (bytes.starts_with("GIF87a"sv) || bytes.starts_with("GIF89a"sv)) return Format::gif;
    if (bytes.starts_with("RIFF"sv) && bytes.substr(0, 12).ends_with("WEBP"sv)) return Format::webp;
    return std::nullopt;
}

bool isIntact(std::string_view bytes, Format format) {
    switch (format) {
        case Format::jpeg:
            return isIntactJPEG(bytes);
        case Format::gif:
            return isIntactGIF(bytes);
        case Format::png:
            return isIntactPNG(bytes);
        case Format::webp:
            return true;  // Its decoder refuses damaged bytes, and says so only to its caller.
    }
    return false;
}

bool comesLineByLine(std::string_view bytes, Format format) {
    constexpr std::size_t interlacing = 28;
    if (format == Format::png) return bytes.size() > interlacing && bytes[interlacing] == 0;
    return format == Format::jpeg && hasOneScan(bytes);
}

}  // namespace vantix::EncodedImage
