#include "DeclarativeUI/Layout/TouchTargets.h"

#include "DeclarativeUI/Layout/Element.h"

#include <algorithm>
#include <vector>

namespace vantix {

namespace {

constexpr double smallestTarget = 44;

bool isEmpty(const Rect& rect) { return rect.size.width <= 0 || rect.size.height <= 0; }

/// An extent along one axis.
struct Span {
    double start = 0;
    double end = 0;

    double length() const { return end - start; }
    bool meets(const Span& other) const { return start < other.end && other.start < end; }
};

Span along(Axis axis, const Rect& rect) {
    return axis == Axis::horizontal ? Span{rect.minX(), rect.maxX()} : Span{rect.minY(), rect.maxY()};
}

void set(Rect& rect, Axis axis, const Span& span) {
    (axis == Axis::horizontal ? rect.origin.x : rect.origin.y) = span.start;
    (axis == Axis::horizontal ? rect.size.width : rect.size.height) = span.length();
}

Axis across(Axis axis) { return axis == Axis::horizontal ? Axis::vertical : Axis::horizontal; }

class Spreading {
public:
    explicit Spreading(RecordedElements& recorded) : recorded_(recorded) {
        for (TouchRegion& region : recorded.touchRegions) {
            if (!isEmpty(region.area) && !holdsControls(region)) controls_.push_back(&region);
        }
    }

    void run() {
        for (Axis axis : {Axis::horizontal, Axis::vertical}) {
            std::vector<Span> grown;
            for (const TouchRegion* control : controls_) grown.push_back(grownSpan(*control, axis));
            for (std::size_t at = 0; at < grown.size(); ++at) set(controls_[at]->area, axis, grown[at]);
        }
    }

private:
    const AccessibleElement* elementOf(const TouchRegion& region) const {
        return region.element < 0 ? nullptr : &recorded_.elements[static_cast<std::size_t>(region.element)];
    }
    bool holdsControls(const TouchRegion& region) const {
        const AccessibleElement* element = elementOf(region);
        return element && isContainer(element->role);
    }
    bool isImage(const TouchRegion& region) const {
        const AccessibleElement* element = elementOf(region);
        return element && element->role == Role::image;
    }

    /// How much is missing; pictures, which do what their card does, never grow.
    double missing(const TouchRegion& control, Axis axis) const {
        return isImage(control) ? 0 : std::max(0.0, smallestTarget - along(axis, control.frame).length());
    }

    /// Takes what is missing evenly from both sides, or more from one when there is too little room on the other.
    Span grownSpan(const TouchRegion& control, Axis axis) const {
        double length = missing(control, axis);
        Span own = along(axis, control.area);
        Span room = roomAround(control, axis);
        double before = std::min(own.start - room.start, std::max(length / 2, length - (room.end - own.end)));
        double after = std::min(room.end - own.end, length - before);
        return {own.start - before, own.end + after};
    }

    /// Up to the edge of what is in view and to the next controls, with whom the gap is shared when they grow, too.
    Span roomAround(const TouchRegion& control, Axis axis) const {
        Span own = along(axis, control.area);
        Span room = along(axis, control.bounds);
        for (const TouchRegion* other : controls_) {
            Span taken = along(axis, other->area);
            bool isBeside = along(across(axis), other->area).meets(along(across(axis), control.area));
            if (!isBeside || taken.meets(own)) continue;
            double share = missing(*other, axis) > 0 ? 0.5 : 1;
            if (taken.end <= own.start) room.start = std::max(room.start, own.start - (own.start - taken.end) * share);
            if (taken.start >= own.end) room.end = std::min(room.end, own.end + (taken.start - own.end) * share);
        }
        return room;
    }

    RecordedElements& recorded_;
    /// In painting order.
    std::vector<TouchRegion*> controls_;
};

/// The largest part of a target at one side of what lies over it.
Rect beside(const Rect& target, const Rect& upper) {
    Rect common = target.intersection(upper);
    if (isEmpty(common)) return target;
    Rect largest{target.origin, {}};
    for (Axis axis : {Axis::horizontal, Axis::vertical}) {
        Span whole = along(axis, target);
        Span covered = along(axis, common);
        for (const Span& left : {Span{whole.start, covered.start}, Span{covered.end, whole.end}}) {
            Rect part = target;
            set(part, axis, left);
            if (part.size.width * part.size.height > largest.size.width * largest.size.height) largest = part;
        }
    }
    return largest;
}

}  // namespace

void spreadTargets(RecordedElements& recorded) {
    Spreading(recorded).run();
    auto& [elements, regions, adjustments, cards] = recorded;
    for (auto region = regions.begin(); region != regions.end(); ++region) {
        if (region->element < 0) continue;
        AccessibleElement& element = elements[static_cast<std::size_t>(region->element)];
        element.target = region->area;
        if (isContainer(element.role)) continue;
        for (auto upper = std::next(region); upper != regions.end(); ++upper)
            element.target = beside(element.target, upper->area);
    }
}

}  // namespace vantix
