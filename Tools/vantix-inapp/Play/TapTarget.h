#pragma once

#include "DeclarativeUI/HostedView.h"
#include "Tools/vantix-inapp/Scenario/Step.h"

namespace vantix {

/// What a tap step meets: at its point, or at the first element in painting order that it describes, which is scrolled
/// into view. Without element when there is nothing to meet.
HostedView::TapResult findTapTarget(HostedView& content, const step::Tap& tap);

}  // namespace vantix
