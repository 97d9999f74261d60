#include "Tools/vantix-inapp/TapTarget.h"

#include <algorithm>

namespace vantix {

namespace {

bool takesTaps(Role role) {
    switch (role) {
        case Role::close:
        case Role::button:
        case Role::star:
        case Role::option:
        case Role::image:
        case Role::card:
        case Role::row:
            return true;
        default:
            return false;
    }
}

bool isDescribed(const AccessibleElement& element, const step::Tap& tap) {
    return takesTaps(element.role) && (!tap.role || *tap.role == roleName(element.role)) &&
           (!tap.label || *tap.label == element.label) && (!tap.index || *tap.index == element.index);
}

}  // namespace

HostedView::TapResult findTapTarget(HostedView& content, const step::Tap& tap) {
    if (tap.point) return content.hitTest(*tap.point);
    const auto& elements = content.elements();
    auto found = std::find_if(elements.begin(), elements.end(),
                              [&](const AccessibleElement& element) { return isDescribed(element, tap); });
    if (found == elements.end()) return {};
    return content.hitTest(AccessibleElement(*found));
}

}  // namespace vantix
