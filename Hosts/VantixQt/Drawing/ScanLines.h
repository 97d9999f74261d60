#pragma once

#include "Platform/Ports/ImageDecoder.h"

#include <QColorSpace>

#include <bit>
#include <cstdint>
#include <optional>
#include <span>

namespace vantix {

/// How a picture is turned upright: mirrored as its lines come, then transposed.
struct Orientation {
    bool mirrorsX = false;
    bool mirrorsY = false;
    bool isTransposed = false;

    PixelSize applied(PixelSize size) const { return isTransposed ? PixelSize{size.height, size.width} : size; }
};

/// A line of a picture, or every so-manieth pixel of one.
struct ScanLine {
    int y = 0;
    int firstX = 0;
    int stepX = 1;
    /// 0xAARRGGBB, alpha not multiplied in.
    std::span<const std::uint32_t> pixels;
};

/// A picture that is decoded line by line. To be used on one thread.
class ScanLines {
public:
    virtual ~ScanLines() = default;

    /// Of the picture as it is stored, not turned.
    virtual PixelSize size() const = 0;
    virtual Orientation orientation() const { return {}; }
    /// False for an interlaced picture: later lines go between earlier ones.
    virtual bool comeInOrder() const { return true; }
    /// How many bytes decoding takes.
    virtual std::int64_t memory() const = 0;

    /// To be called once, before the first line. The lines are those of the returned size: the picture's own, or a
    /// smaller one of at least twice `needed`. Absent for a damaged picture, or when the time is over.
    virtual std::optional<PixelSize> begin(PixelSize needed) = 0;
    /// Valid until the next call. Absent for a damaged picture.
    virtual std::optional<ScanLine> next() = 0;
    /// Invalid if the picture names none.
    virtual QColorSpace colorSpace() const = 0;
};

constexpr bool isLittleEndian = std::endian::native == std::endian::little;

}  // namespace vantix
