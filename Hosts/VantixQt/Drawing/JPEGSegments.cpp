#include "VantixQt/Drawing/JPEGSegments.h"

#include "VantixQt/Drawing/ByteReader.h"

namespace vantix {

namespace {

using namespace std::string_view_literals;

enum Marker : std::uint8_t {
    startOfFrame = 0xC0,
    firstRestart = 0xD0,
    lastRestart = 0xD7,
    startOfImage = 0xD8,
    endOfImage = 0xD9,
    startOfScan = 0xDA,
    exif = 0xE1,
    colorProfile = 0xE2,
};

constexpr std::size_t largestProfile = std::size_t{4} << 20;

Orientation orientationOfTag(std::uint32_t tag) {
    return {.mirrorsX = tag == 2 || tag == 3 || tag == 7 || tag == 8,
            .mirrorsY = tag == 3 || tag == 4 || tag == 6 || tag == 7,
            .isTransposed = tag >= 5 && tag <= 8};
}

/// Of the first directory of a TIFF file, which is what Exif data are.
Orientation orientationInTIFF(std::string_view tiff) {
    constexpr std::uint32_t orientationTag = 0x0112;
    constexpr int entrySize = 12;
    const bool isReversed = tiff.starts_with("II"sv);
    ByteReader reader(tiff);
    auto number = [&](int count) { return isReversed ? reader.reversedNumber(count) : reader.number(count); };
    reader.skip(4);
    std::uint32_t directory = number(4);
    reader = ByteReader(tiff);
    reader.skip(directory);
    for (std::uint32_t left = number(2); left > 0 && !reader.isExhausted(); --left) {
        std::uint32_t tag = number(2);
        if (tag != orientationTag) {
            reader.skip(entrySize - 2);
            continue;
        }
        reader.skip(6);
        return orientationOfTag(number(2));
    }
    return {};
}

void read(std::uint8_t marker, std::string_view segment, JPEGSegments& segments) {
    constexpr auto exifName = "Exif\0\0"sv, profileName = "ICC_PROFILE\0"sv;
    if (marker == exif && segment.starts_with(exifName)) {
        segments.orientation = orientationInTIFF(segment.substr(exifName.size()));
    }
    // The name is followed by a number for this part and one for all.
    bool isProfile = marker == colorProfile && segment.starts_with(profileName) && segment.size() > 14;
    if (isProfile && segments.profile.size() < largestProfile) segments.profile += segment.substr(14);
}

/// No length follows: a zero behind a byte of 0xFF in the compressed data of a scan, a marker for private use or a
/// reserved one, which libjpeg passes over or refuses, and a restart.
bool standsAlone(std::uint8_t marker) {
    return marker < startOfFrame || (marker >= firstRestart && marker <= lastRestart);
}

/// The next marker that does not stand alone.
std::uint8_t nextMarker(ByteReader& reader) {
    while (!reader.isExhausted()) {
        reader.skip(reader.rest().find('\xFF'));
        reader.skip(1);
        std::uint8_t marker = reader.byte();
        while (marker == 0xFF) marker = reader.byte();
        if (!standsAlone(marker)) return marker;
    }
    return 0;
}

}  // namespace

std::optional<JPEGSegments> jpegSegments(std::string_view bytes) {
    JPEGSegments segments;
    ByteReader reader(bytes);
    reader.skip("\xFF\xD8"sv.size());
    if (reader.rest().substr(0, 1) != "\xFF"sv) return std::nullopt;
    while (!reader.isExhausted()) {
        std::uint8_t marker = nextMarker(reader);
        if (marker == endOfImage) break;
        if (marker == startOfImage) return std::nullopt;
        std::uint32_t length = reader.number(2);
        if (length < 2) return std::nullopt;
        std::string_view segment = reader.take(length - 2);
        if (marker == startOfScan) ++segments.scanCount;
        read(marker, segment, segments);
    }
    if (reader.isExhausted() || segments.scanCount == 0) return std::nullopt;
    return segments;
}

}  // namespace vantix
