#pragma once

#include "Platform/Values/Geometry.h"

#include <cmath>

namespace vantix {

/// The device pixels under a layout. Whatever is settled on them has its edges between two pixels, so that it is
/// painted sharply; what shares an edge shares it afterwards.
class PixelGrid {
public:
    /// `scale` is pixels for each point.
    explicit PixelGrid(double scale) : scale_(scale) {}

    double pixel() const { return 1 / scale_; }

    /// The nearest edge between two pixels; of two that are equally near, the one further right or down.
    double settled(double length) const { return std::floor(length * scale_ + 0.5 + tolerance) / scale_; }
    double roundedUp(double length) const { return std::ceil(length * scale_ - tolerance) / scale_; }
    double roundedDown(double length) const { return std::floor(length * scale_ + tolerance) / scale_; }

    Size settled(Size size) const { return {settled(size.width), settled(size.height)}; }
    EdgeInsets settled(const EdgeInsets& insets) const {
        return {settled(insets.top), settled(insets.left), settled(insets.bottom), settled(insets.right)};
    }
    Rect settled(const Rect& frame) const {
        double left = settled(frame.minX());
        double top = settled(frame.minY());
        return {{left, top}, settled(Size{frame.maxX() - left, frame.maxY() - top})};
    }

private:
    /// What computing with lengths may lose, in pixels.
    static constexpr double tolerance = 1e-6;

    double scale_;
};

}  // namespace vantix
