#pragma once

#include "DeclarativeUI/Layout/ClipStack.h"
#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/SettledLayout.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vantix {

/// Records, while views are placed from the outside in, which elements they make and where these can be touched.
class ElementRecorder {
public:
    /// Touches reach what the clips leave.
    explicit ElementRecorder(const ClipStack& clips) : clips_(clips) {}

    /// Opens the element that the layers from this one on make; what is placed until `end` belongs to it. Without a
    /// label, the texts inside make it up.
    void begin(const Element& layer, Role role, const std::string& label, const Rect& frame);
    void end();
    /// Adds what a text or picture shows to the element that it stands in, or makes it an element of its own.
    void show(const AccessibleElement& shown);

    /// Opens the control among the layers of a view, which reaches as far as the outermost of them.
    void beginControl(const Element& outermost, const Control& control, const Rect& frame);
    void endControl();
    /// Whether this is the control that was opened last.
    bool isPlacing(const Control& control) const;

    /// Claims the touches of the control that is open; `layer` is the control itself.
    void addControl(const Element& layer);
    /// Claims touches in an area. They mean the element that the gesture is a layer of.
    void addGesture(const Element& gesture, const Rect& area, std::function<void()> action);

    /// Lets assistive technology increase and decrease the element that is open.
    void addAdjustment(std::function<void(int)> adjust);

    /// Settles which elements can be touched, and where. The recorder is empty afterwards.
    RecordedElements finish();

private:
    /// A place that takes touches, and what was in view around it when it was met.
    struct Reach {
        Rect frame;
        Rect bounds;
    };

    void open(AccessibleElement element, const Element& outermost);
    /// Into the container around it.
    void add(AccessibleElement element);
    void addText(AccessibleElement text);
    AccessibleElement& elementAt(int position);
    void addTouchRegion(const Element& layer, const Reach& reach, std::function<void()> action);
    void claimTouches(const Element& owner, int position);

    struct OpenElement {
        int position = 0;
        const Element* outermost = nullptr;
        /// Whether the texts inside make up its label.
        bool collectsTexts = true;
    };
    struct OpenControl {
        const Control* control = nullptr;
        Reach reach;
        bool isElement = false;
    };

    const ClipStack& clips_;
    RecordedElements recorded_;
    /// From the outermost.
    std::vector<OpenElement> openElements_;
    std::vector<OpenControl> openControls_;
    /// How many elements of each role there are.
    std::map<Role, int> counts_;
};

}  // namespace vantix
