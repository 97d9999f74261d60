#include "VantixQt/Drawing/ReducedPicture.h"

#include <QRgb>

#include <algorithm>
#include <utility>

namespace vantix {

namespace {

using Pixel = std::array<float, 4>;

void add(const Pixel& pixel, float share, Pixel& total) {
    for (std::size_t channel = 0; channel < total.size(); ++channel) total[channel] += share * pixel[channel];
}

/// The sum of red, green, blue, with alpha multiplied in, and alpha. Of no more than `mostSummed` pixels.
constexpr std::int64_t mostSummed = 65'536;
Pixel sum(std::span<const std::uint32_t> pixels) {
    std::uint32_t red = 0, green = 0, blue = 0, alpha = 0;
    for (std::uint32_t pixel : pixels) {
        const std::uint32_t opacity = pixel >> 24;
        red += opacity * (pixel >> 16 & 255);
        green += opacity * (pixel >> 8 & 255);
        blue += opacity * (pixel & 255);
        alpha += opacity;
    }
    auto premultiplied = [](std::uint32_t channel) { return static_cast<float>(channel) / 255; };
    return {premultiplied(red), premultiplied(green), premultiplied(blue), static_cast<float>(alpha)};
}

std::uint32_t rounded(const Pixel& mean) {
    auto byte = [&mean](std::size_t channel) { return static_cast<int>(std::min(mean[channel], 255.0F) + 0.5F); };
    return qRgba(byte(0), byte(1), byte(2), byte(3));
}

/// The cells of a shorter axis that one cell of a longer one touches: the first, and how much of it the latter covers;
/// the rest of the latter lies in the next.
class Overlap {
public:
    Overlap(int source, int sourceCount, int targetCount) : sourceCount_(sourceCount), targetCount_(targetCount) {
        cell_ = static_cast<int>(std::int64_t{source} * targetCount / sourceCount);
        room_ = (std::int64_t{cell_} + 1) * sourceCount - std::int64_t{source} * targetCount;
    }

    int cell() const { return cell_; }
    float share() const { return fraction(std::min(room_, std::int64_t{targetCount_})); }
    bool reachesNext() const { return room_ < targetCount_; }
    /// How many source cells, each `step` behind the one before, lie within the first cell as this one does.
    std::int64_t countWithin(int step) const {
        return reachesNext() ? 1 : (room_ - targetCount_) / (std::int64_t{step} * targetCount_) + 1;
    }
    float shareOfNext() const { return fraction(targetCount_ - room_); }

    void advance(std::int64_t step) {
        room_ -= step * targetCount_;
        for (; room_ <= 0; room_ += sourceCount_) ++cell_;
    }

private:
    float fraction(std::int64_t covered) const {
        return static_cast<float>(covered) / static_cast<float>(sourceCount_);
    }

    int sourceCount_;
    int targetCount_;
    int cell_;
    /// How much of the first cell lies behind the source's begin, in units of which a source cell has `targetCount_`.
    std::int64_t room_;
};

}  // namespace

ReducedPicture::ReducedPicture(PixelSize source, PixelSize target, Orientation orientation, bool linesComeInOrder)
    : source_(source), target_(target), orientation_(orientation), rowsAtOnce_(linesComeInOrder ? 2 : target.height) {
    auto [width, height] = orientation.applied(target);
    bitmap_.width = width;
    bitmap_.height = height;
    bitmap_.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (source == target) return;
    line_.resize(static_cast<std::size_t>(target.width));
    sums_.resize(line_.size() * static_cast<std::size_t>(rowsAtOnce_));
}

std::int64_t ReducedPicture::memoryPerPixel(bool isReduced, bool linesComeInOrder) {
    const std::size_t sum = isReduced && !linesComeInOrder ? sizeof(Pixel) : 0;
    return static_cast<std::int64_t>(sizeof(std::uint32_t) + sum);
}

void ReducedPicture::add(const ScanLine& line) {
    if (source_ == target_) return addUnscaled(line);
    averageColumns(line);
    const Overlap rows(line.y, source_.height, target_.height);
    auto addTo = [this](int row, float share) {
        Pixel* total = sumOfRow(row);
        for (const Pixel& mean : line_) vantix::add(mean, share, *total++);
    };
    if (rowsAtOnce_ == 2) finishRowsBefore(rows.cell());
    addTo(rows.cell(), rows.share());
    if (rows.reachesNext()) addTo(rows.cell() + 1, rows.shareOfNext());
}

Bitmap ReducedPicture::take() {
    if (source_ != target_) finishRowsBefore(target_.height);
    return std::move(bitmap_);
}

void ReducedPicture::addUnscaled(const ScanLine& line) {
    int x = line.firstX;
    for (std::uint32_t straight : line.pixels) {
        pixel(x, line.y) = qPremultiply(straight);
        x += line.stepX;
    }
}

void ReducedPicture::averageColumns(const ScanLine& line) {
    std::fill(line_.begin(), line_.end(), Pixel{});
    Overlap columns(line.firstX, source_.width, target_.width);
    for (auto left = line.pixels; !left.empty();) {
        const std::int64_t count = std::min({columns.countWithin(line.stepX), std::ssize(left), mostSummed});
        const Pixel colors = sum(left.first(static_cast<std::size_t>(count)));
        const auto cell = static_cast<std::size_t>(columns.cell());
        vantix::add(colors, columns.share(), line_[cell]);
        if (columns.reachesNext()) vantix::add(colors, columns.shareOfNext(), line_[cell + 1]);
        columns.advance(count * line.stepX);
        left = left.subspan(static_cast<std::size_t>(count));
    }
}

void ReducedPicture::finishRowsBefore(int row) {
    while (finishedRows_ < row) finishRow();
}

void ReducedPicture::finishRow() {
    Pixel* mean = sumOfRow(finishedRows_);
    for (int x = 0; x < target_.width; ++x) pixel(x, finishedRows_) = rounded(std::exchange(mean[x], Pixel{}));
    ++finishedRows_;
}

ReducedPicture::Pixel* ReducedPicture::sumOfRow(int row) {
    return sums_.data() + static_cast<std::size_t>(row % rowsAtOnce_) * line_.size();
}

std::uint32_t& ReducedPicture::pixel(int x, int y) {
    if (orientation_.mirrorsX) x = target_.width - 1 - x;
    if (orientation_.mirrorsY) y = target_.height - 1 - y;
    if (orientation_.isTransposed) std::swap(x, y);
    return bitmap_
        .pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap_.width) + static_cast<std::size_t>(x)];
}

}  // namespace vantix
