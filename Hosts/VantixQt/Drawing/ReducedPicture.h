#pragma once

#include "Platform/Values/Image.h"
#include "VantixQt/Drawing/ScanLines.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vantix {

/// Averages the lines of a picture over the areas that the pixels of a smaller one cover, and turns that upright.
class ReducedPicture {
public:
    /// `target`, in which neither side is longer than the source's, is not turned yet.
    ReducedPicture(PixelSize source, PixelSize target, Orientation orientation, bool linesComeInOrder);

    /// How many bytes are needed for each pixel of the target.
    static std::int64_t memoryPerPixel(bool isReduced, bool linesComeInOrder);

    void add(const ScanLine& line);
    /// When all lines were added; upright.
    Bitmap take();

private:
    using Pixel = std::array<float, 4>;

    void addUnscaled(const ScanLine& line);
    void averageColumns(const ScanLine& line);
    void finishRowsBefore(int row);
    void finishRow();
    Pixel* sumOfRow(int row);
    std::uint32_t& pixel(int x, int y);

    PixelSize source_;
    PixelSize target_;
    Orientation orientation_;
    Bitmap bitmap_;
    std::vector<Pixel> line_;
    int rowsAtOnce_;
    std::vector<Pixel> sums_;
    int finishedRows_ = 0;
};

}  // namespace vantix
