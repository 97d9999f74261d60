#include "Tools/vantix-inapp/Play/TapTarget.h"

#include "DeclarativeUI/Offscreen/Aim.h"

#include <algorithm>

namespace vantix {

namespace {

bool isDescribed(const AccessibleElement& element, const step::Tap& tap) {
    return takesTaps(element.role) && (!tap.role || *tap.role == element.role) &&
           (!tap.label || *tap.label == element.label) && (!tap.index || *tap.index == element.index);
}

}  // namespace

HostedView::TapResult findTapTarget(HostedView& content, const step::Tap& tap) {
    if (tap.point) return content.hitTest(*tap.point);
    const auto& elements = content.elements();
    auto found = std::find_if(elements.begin(), elements.end(),
                              [&](const AccessibleElement& element) { return isDescribed(element, tap); });
    if (found == elements.end()) return {};
    return aimAt(content, AccessibleElement(*found));
}

}  // namespace vantix
