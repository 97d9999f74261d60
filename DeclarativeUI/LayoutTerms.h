#pragma once

#include "Platform/Values/LayoutDirection.h"

#include <limits>
#include <optional>

namespace vantix {

/// The standard distance between a view and what surrounds it, in points.
inline constexpr double standardPadding = 16;

inline constexpr double infinity = std::numeric_limits<double>::infinity();

enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, bottom };

/// Where a view stands in the room that it leaves.
struct Alignment {
    HorizontalAlignment horizontal = HorizontalAlignment::center;
    VerticalAlignment vertical = VerticalAlignment::center;

    static constexpr Alignment center() { return {}; }
    static constexpr Alignment top() { return {HorizontalAlignment::center, VerticalAlignment::top}; }
    static constexpr Alignment leading() { return {HorizontalAlignment::leading, VerticalAlignment::center}; }
    static constexpr Alignment bottom() { return {HorizontalAlignment::center, VerticalAlignment::bottom}; }
    static constexpr Alignment topLeading() { return {HorizontalAlignment::leading, VerticalAlignment::top}; }
    static constexpr Alignment topTrailing() { return {HorizontalAlignment::trailing, VerticalAlignment::top}; }
};

enum class TextAlignment { leading, center, trailing };

/// Edges to pad or to extend under; combine with |.
enum class Edge : unsigned { top = 1, leading = 2, bottom = 4, trailing = 8, horizontal = 10, vertical = 5, all = 15 };
constexpr Edge operator|(Edge a, Edge b) {
    return static_cast<Edge>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool includes(Edge set, Edge edge) { return (static_cast<unsigned>(set) & static_cast<unsigned>(edge)) != 0; }

/// Which frame to put around a view; an absent length leaves that axis to the view.
struct FrameSpec {
    std::optional<double> width = {};
    std::optional<double> height = {};
    std::optional<double> minHeight = {};
    /// Infinite: take all that is offered.
    std::optional<double> maxWidth = {};
    std::optional<double> maxHeight = {};
    Alignment alignment = {};
};

}  // namespace vantix
