#pragma once

#include "DeclarativeUI/View.h"

#include <vector>

namespace vantix {

/// The standard gap between siblings of a stack, in points.
inline constexpr double standardSpacing = 8;

/// Stacks lay their children out one after the other: the least flexible child chooses its length first, spacers last;
/// each is offered an equal share of what is left.

/// From the top down.
View VStack(const std::vector<View>& children);
View VStack(HorizontalAlignment alignment, const std::vector<View>& children);
View VStack(HorizontalAlignment alignment, double spacing, const std::vector<View>& children);

/// From the leading edge on.
View HStack(const std::vector<View>& children);
View HStack(VerticalAlignment alignment, const std::vector<View>& children);
View HStack(VerticalAlignment alignment, double spacing, const std::vector<View>& children);

/// Over one another, the last one on top.
View ZStack(Alignment alignment, const std::vector<View>& children);

}  // namespace vantix
