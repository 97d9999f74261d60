#include "DeclarativeUI/Layout/Lengths.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

/// Lengths beyond this are beyond every screen; they keep the arithmetic finite.
constexpr double longestLength = 1e7;

}  // namespace

double bounded(double length) { return std::isnan(length) ? 0 : std::clamp(length, -longestLength, longestLength); }

EdgeInsets bounded(const EdgeInsets& insets) {
    return {bounded(insets.top), bounded(insets.left), bounded(insets.bottom), bounded(insets.right)};
}

Size bounded(Size size) { return {std::max(0.0, bounded(size.width)), std::max(0.0, bounded(size.height))}; }

}  // namespace vantix
