#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/DisplayList.h"

#include <functional>
#include <string>
#include <vector>

namespace vantix {

class Element;

/// A place that wants touches.
struct TouchRegion {
    /// In view.
    Rect area;
    /// All of what takes the touches, in view or not.
    Rect frame;
    /// How far the view around it reaches.
    Rect bounds;
    std::function<void()> action;
    /// The position of its element among the settled ones; -1 when it belongs to none.
    int element = -1;
    /// While elements are being recorded: the layer that will make its element; null when none will.
    const Element* owner = nullptr;
};

/// What increases an element's value by so many steps, or decreases it.
struct Adjustment {
    ElementIdentity element;
    std::function<void(int)> adjust;
};

/// What can be met in a layout, in painting order.
struct RecordedElements {
    std::vector<AccessibleElement> elements;
    std::vector<TouchRegion> touchRegions;
    std::vector<Adjustment> adjustments;
    /// The visible parts of the cards.
    std::vector<Rect> cards;
};

/// A size that somebody asked to be told.
struct SizeReport {
    std::string key;
    Size size;
    std::function<void(Size)> tell;
};

/// What a layout leads to.
struct SettledLayout {
    DisplayList displayList;
    RecordedElements recorded;
    bool passesTouchesOutsideCard = false;
    /// Of the texts; empty where the view does not tell.
    std::string language;
    /// Where the scrolling area is, the window when there is none, and how far its content can move.
    Rect viewport;
    double scrollRange = 0;
    std::vector<SizeReport> sizeReports;
};

}  // namespace vantix
