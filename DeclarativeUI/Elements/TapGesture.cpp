#include "DeclarativeUI/Elements/TapGesture.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

class TapGestureElement final : public WrapperElement {
public:
    TapGestureElement(const ElementPointer& content, std::function<void()> action)
        : WrapperElement(content), action_(std::move(action)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.elements().addGesture(*this, touchArea(frame, environment), action_);
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::function<void()> action_;
};

}  // namespace

ElementPointer tappable(const ElementPointer& content, std::function<void()> action) {
    return modified<TapGestureElement>(content, std::move(action));
}

}  // namespace vantix
