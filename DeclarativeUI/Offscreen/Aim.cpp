#include "DeclarativeUI/Offscreen/Aim.h"

#include <algorithm>

namespace vantix {

namespace {

bool isSame(const AccessibleElement& a, const AccessibleElement& b) { return a.role == b.role && a.index == b.index; }

/// Where the element stands now; null when it is gone.
const AccessibleElement* find(const HostedView& content, const AccessibleElement& element) {
    const auto& elements = content.elements();
    auto found = std::find_if(elements.begin(), elements.end(),
                              [&](const AccessibleElement& candidate) { return isSame(candidate, element); });
    return found == elements.end() ? nullptr : &*found;
}

void scrollIntoView(HostedView& content, const Rect& frame) {
    auto [viewport, offset, range] = content.scrollArea();
    double middle = frame.center().y;
    if (middle < viewport.minY() || middle >= viewport.maxY()) content.scroll(middle - viewport.center().y);
}

/// Whether there was anything left to scroll.
bool scrollByPage(HostedView& content) {
    auto [viewport, before, range] = content.scrollArea();
    content.scroll(viewport.size.height);
    return content.scrollArea().offset > before;
}

/// A tap on what is in view of the element, at a point that no control covers.
HostedView::TapResult hitBesideControls(const HostedView& content, const AccessibleElement& element) {
    constexpr int steps = 32;
    constexpr double border = 1;
    Rect frame = find(content, element)->frame.intersection(content.scrollArea().viewport);
    frame = frame.inset({border, border, border, border});
    for (int row = 0; row <= steps; ++row) {
        for (int column = 0; column <= steps; ++column) {
            auto met = content.hitTest(Point{frame.minX() + frame.size.width * column / steps,
                                             frame.minY() + frame.size.height * row / steps});
            if (met.element && isSame(*met.element, element)) return met;
        }
    }
    return {};
}

}  // namespace

HostedView::TapResult aimAt(HostedView& content, const AccessibleElement& element) {
    const AccessibleElement* aimed = find(content, element);
    if (!aimed) return {};
    scrollIntoView(content, aimed->frame);
    if (!isContainer(element.role)) return content.hitTest(find(content, element)->frame.center());

    auto met = hitBesideControls(content, element);
    if (!met.action) content.scroll(-infinity);
    for (bool moves = true; !met.action && moves; moves = scrollByPage(content)) {
        met = hitBesideControls(content, element);
    }
    return met;
}

}  // namespace vantix
