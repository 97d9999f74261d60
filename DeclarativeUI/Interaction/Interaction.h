#pragma once

#include "DeclarativeUI/DisplayList.h"
#include "DeclarativeUI/HostedView.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantix {

/// What a keyboard says to a message.
enum class Key { next, previous, up, down, left, right, pageUp, pageDown, home, end, activate, escape };

/// What becomes of the focus behind the last control and before the first.
enum class FocusCycle {
    /// It goes round: the application is out of reach.
    closed,
    /// It goes back to the application.
    open,
};

/// What a person does to a hosted view with pointer and keys, and what is painted of that: the control that is pressed
/// and the one that has the focus.
///
/// The host hands in what its toolkit tells it and paints `decorations()` above the view's own list. A press is
/// performed when it is let go over the control that it began on, unless the content scrolled in between. One pointer
/// at a time. Main thread only.
class VANTIX_EXPORT Interaction {
public:
    Interaction(std::shared_ptr<HostedView> view, FocusCycle cycle) : view_(std::move(view)), cycle_(cycle) {}

    /// Called when the decorations changed. May be empty.
    void setOnNeedsDisplay(std::function<void()> handler) { onNeedsDisplay_ = std::move(handler); }
    /// Called when another control has the focus, or none. May be empty.
    void setOnFocusChanged(std::function<void()> handler) { onFocusChanged_ = std::move(handler); }

    void pointerDown(Point point);
    /// A press that leaves its control is not performed unless it comes back.
    void pointerMoved(Point point);
    void pointerUp(Point point);
    /// Nothing comes of the press: it became a scroll, or the toolkit took it away.
    void pointerCancelled();
    /// Whether a control is pressed now.
    bool isPressing() const;

    /// False when the message has no use for the key; the application may then have it.
    bool keyDown(Key key);

    /// The identity of the element that has the focus; absent when none has it, or when it is gone.
    const std::optional<ElementIdentity>& focused() const { return focused_; }
    /// The focus goes to this element, if a keyboard can reach it, and into sight.
    void setFocus(std::optional<ElementIdentity> identity);

    /// To be painted above the view's display list, in the same coordinates.
    DisplayList decorations() const;

private:
    bool moveFocus(int step);
    bool moveFocusAmongOptions(int step);
    bool adjustOrScroll(Key key);
    bool adjust(int steps);
    bool scroll(double points);
    bool performClose();
    void focus(const AccessibleElement& element);
    void setPressed(bool isOverPressed);
    void changed() const;

    std::shared_ptr<HostedView> view_;
    FocusCycle cycle_;
    std::function<void()> onNeedsDisplay_;
    std::function<void()> onFocusChanged_;
    struct Press {
        HostedView::TapResult met;
        /// Where the content stood.
        double offset = 0;
    };
    /// Whether the press would be performed here.
    bool isOver(const Press& press, const HostedView::TapResult& met) const;

    std::optional<Press> press_;
    bool isOverPressed_ = false;
    std::optional<ElementIdentity> focused_;
    /// A focus that came by pointer is not drawn.
    bool showsFocus_ = false;
};

}  // namespace vantix
