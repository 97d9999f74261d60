#pragma once

#include "Platform/Values/Image.h"
#include "VantixQt/Drawing/DecodingTime.h"
#include "VantixQt/Drawing/ScanLines.h"

#include <optional>
#include <string_view>

namespace vantix {

/// Where the first picture of a WebP stands in its bytes, which outlive this.
struct WebPFrame {
    /// Absent for a damaged header.
    static std::optional<WebPFrame> find(std::string_view bytes);

    /// Of the whole picture; an animation's first frame may cover a part of it.
    PixelSize canvas;

    /// How many bytes decoding takes.
    std::int64_t memory() const;
    /// The whole picture at `target`, which is no enlargement. Absent for damaged bytes, or when the time is over.
    std::optional<Bitmap> decoded(PixelSize target, const DecodingTime& time) const;
    /// Invalid if the picture names none.
    QColorSpace colorSpace() const;

private:
    int x_ = 0;
    int y_ = 0;
    PixelSize size_;
    bool isLossless_ = false;
    std::string_view data_;
    std::string_view profile_;
};

}  // namespace vantix
