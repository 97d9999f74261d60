#pragma once

#include "DeclarativeUI/HostedView.h"

namespace vantix {

/// Finds what a tap on this element, known by its role and index, meets: scrolls it into view and aims at its middle,
/// or, for a card or row, at a point of it that no control covers. For programs that tap elements by their names.
HostedView::TapResult aimAt(HostedView& content, const AccessibleElement& element);

}  // namespace vantix
