#include "DeclarativeUI/Interaction/Interaction.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vantix {

namespace {

/// Points that an arrow key scrolls by.
constexpr double lineHeight = 40;
/// How much of a page stays in view when a key turns it.
constexpr double pageOverlap = 40;

constexpr Color pressedColor{0, 0, 0, 0.18};
constexpr Color innerRingColor{1, 1, 1, 1};
constexpr Color outerRingColor{0.04, 0.31, 0.72, 1};
constexpr double ringWidth = 2;

const AccessibleElement* find(const std::vector<AccessibleElement>& elements, const ElementIdentity& identity) {
    auto found = std::find_if(elements.begin(), elements.end(),
                              [&](const AccessibleElement& element) { return element.identity() == identity; });
    return found == elements.end() ? nullptr : &*found;
}

std::vector<AccessibleElement> focusable(std::vector<AccessibleElement> elements) {
    std::erase_if(elements, [](const AccessibleElement& element) { return !element.isFocusable(); });
    return elements;
}

Rect grown(const Rect& rect, double by) {
    return {{rect.origin.x - by, rect.origin.y - by}, {rect.size.width + 2 * by, rect.size.height + 2 * by}};
}

double radius(const AccessibleElement& element) {
    bool isRound = element.role == Role::close;
    return isRound ? element.frame.size.width / 2 : element.cornerRadius.value_or(0);
}

/// What a tap meets is the same when its element is, or when both are a backdrop's.
bool isSame(const HostedView::TapResult& a, const HostedView::TapResult& b) {
    if (!a.action || !b.action || a.element.has_value() != b.element.has_value()) return false;
    return !a.element || a.element->identity() == b.element->identity();
}

}  // namespace

// Pointer

void Interaction::pointerDown(Point point) {
    showsFocus_ = false;
    press_ = {view_->hitTest(point), view_->scrollArea().offset};
    setPressed(static_cast<bool>(press_->met.action));
}

void Interaction::pointerMoved(Point point) {
    if (press_) setPressed(isOver(*press_, view_->hitTest(point)));
}

void Interaction::pointerUp(Point point) {
    auto press = std::exchange(press_, {});
    setPressed(false);
    if (!press) return;
    auto met = view_->hitTest(point);
    if (isOver(*press, met)) met.action();
}

bool Interaction::isOver(const Press& press, const HostedView::TapResult& met) const {
    return press.offset == view_->scrollArea().offset && isSame(press.met, met);
}

void Interaction::pointerCancelled() {
    press_ = {};
    setPressed(false);
}

bool Interaction::isPressing() const {
    return isOverPressed_ && press_ && press_->offset == view_->scrollArea().offset;
}

void Interaction::setPressed(bool isOverPressed) {
    isOverPressed_ = isOverPressed;
    changed();
}

// Keys

bool Interaction::keyDown(Key key) {
    switch (key) {
        case Key::next:
            return moveFocus(1);
        case Key::previous:
            return moveFocus(-1);
        case Key::activate:
            return focused_ && view_->activate(*focused_);
        case Key::escape:
            return performClose();
        case Key::up:
            return moveFocusAmongOptions(-1) || adjustOrScroll(key);
        case Key::down:
            return moveFocusAmongOptions(1) || adjustOrScroll(key);
        default:
            return adjustOrScroll(key);
    }
}

bool Interaction::adjustOrScroll(Key key) {
    auto area = view_->scrollArea();
    double page = std::max(lineHeight, area.viewport.size.height - pageOverlap);
    switch (key) {
        case Key::right:
            return adjust(1);
        case Key::left:
            return adjust(-1);
        case Key::up:
            return adjust(1) || scroll(-lineHeight);
        case Key::down:
            return adjust(-1) || scroll(lineHeight);
        case Key::pageUp:
            return scroll(-page);
        case Key::pageDown:
            return scroll(page);
        case Key::home:
            return scroll(-area.range);
        case Key::end:
            return scroll(area.range);
        default:
            return false;
    }
}

bool Interaction::adjust(int steps) { return focused_ && view_->adjust(*focused_, steps); }

bool Interaction::scroll(double points) {
    if (view_->scrollArea().range <= 0) return false;
    view_->scroll(points);
    changed();
    return true;
}

bool Interaction::performClose() {
    const auto& elements = view_->elements();
    auto close = std::find_if(elements.begin(), elements.end(),
                              [](const AccessibleElement& element) { return element.role == Role::close; });
    return close != elements.end() && view_->activate(close->identity());
}

// Focus

bool Interaction::moveFocus(int step) {
    auto order = focusable(view_->readingOrder());
    if (order.empty()) return false;
    auto count = static_cast<int>(order.size());
    auto now = std::find_if(order.begin(), order.end(),
                            [&](const AccessibleElement& element) { return element.identity() == focused_; });
    int next = step > 0 ? 0 : count - 1;
    if (now != order.end()) {
        next = static_cast<int>(now - order.begin()) + step;
        bool leaves = next < 0 || next >= count;
        if (leaves && cycle_ == FocusCycle::open) {
            setFocus({});
            return false;
        }
        next = (next + count) % count;
    }
    focus(order[static_cast<std::size_t>(next)]);
    return true;
}

bool Interaction::moveFocusAmongOptions(int step) {
    if (!focused_ || focused_->role != Role::option) return false;
    auto option = find(view_->elements(), {Role::option, focused_->index + step});
    if (option && option->isFocusable()) focus(*option);
    return true;
}

void Interaction::setFocus(std::optional<ElementIdentity> identity) {
    auto element = identity ? find(view_->elements(), *identity) : nullptr;
    if (element && element->isFocusable()) return focus(*element);
    if (!std::exchange(focused_, {})) return;
    changed();
    if (onFocusChanged_) onFocusChanged_();
}

void Interaction::focus(const AccessibleElement& element) {
    auto before = std::exchange(focused_, element.identity());
    showsFocus_ = true;
    view_->reveal(element.frame);
    changed();
    if (before != focused_ && onFocusChanged_) onFocusChanged_();
}

// Picture

DisplayList Interaction::decorations() const {
    DisplayList list;
    if (isPressing() && press_->met.element) {
        list.emplace_back(FillRect{press_->met.element->frame, radius(*press_->met.element), pressedColor});
    }
    auto focused = showsFocus_ && focused_ ? find(view_->elements(), *focused_) : nullptr;
    if (focused) {
        Rect inner = grown(focused->frame, -ringWidth / 2);
        list.emplace_back(
            StrokeRect{grown(inner, ringWidth), radius(*focused) + ringWidth / 2, ringWidth, outerRingColor});
        list.emplace_back(StrokeRect{inner, radius(*focused), ringWidth, innerRingColor});
    }
    return list;
}

void Interaction::changed() const {
    if (onNeedsDisplay_) onNeedsDisplay_();
}

}  // namespace vantix
