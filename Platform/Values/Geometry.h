#pragma once

#include <algorithm>

namespace vantix {

/// All lengths are points of the window unless a name says pixels; x grows rightwards, y downwards.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// In points.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

/// Distances from the edges inwards, in points.
struct EdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    bool operator==(const EdgeInsets&) const = default;
};

/// In points; the y axis points down.
struct Rect {
    Point origin;
    Size size;

    double minX() const { return origin.x; }
    double minY() const { return origin.y; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    Point center() const { return {origin.x + size.width / 2, origin.y + size.height / 2}; }

    /// True for points on the top and left edges, false on the bottom and right ones.
    bool contains(Point point) const {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    Rect inset(const EdgeInsets& insets) const {
        return {{origin.x + insets.left, origin.y + insets.top},
                {size.width - insets.left - insets.right, size.height - insets.top - insets.bottom}};
    }

    /// What both cover; of no size when that is nothing.
    Rect intersection(const Rect& other) const {
        double left = std::max(minX(), other.minX());
        double top = std::max(minY(), other.minY());
        return {{left, top},
                {std::max(0.0, std::min(maxX(), other.maxX()) - left),
                 std::max(0.0, std::min(maxY(), other.maxY()) - top)}};
    }

    Rect offset(double dx, double dy) const { return {{origin.x + dx, origin.y + dy}, size}; }

    bool operator==(const Rect&) const = default;
};

}  // namespace vantix
