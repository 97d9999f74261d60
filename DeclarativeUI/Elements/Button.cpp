#include "DeclarativeUI/Elements/Button.h"

#include "DeclarativeUI/Elements/Inherited.h"
#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

/// A control. Its touch area, and the element that it is, reach to the outermost layer around it that is no padding.
class ButtonElement final : public WrapperElement {
public:
    ButtonElement(View label, std::function<void()> action, std::optional<Role> role)
        : WrapperElement(std::move(label)), control_{std::move(action), role} {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.elements().addControl(*this);
        WrapperElement::place(frame, proposal, environment, pass);
    }
    const Control* control() const override { return &control_; }
    const Element* touchedElement() const override { return nullptr; }
    const Element* wrapped() const override { return nullptr; }
    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }

private:
    Control control_;
};

void setButtonStyle(Environment& label) {
    if (!label.foregroundColor) label.foregroundColor = readableAccent(label.backdrop);
    label.textAlignment = TextAlignment::center;
}

}  // namespace

View Button(std::function<void()> action, View label) {
    return modified<ButtonElement>(inherited(label, setButtonStyle), std::move(action), std::optional(Role::button));
}

View PlainButton(std::function<void()> action, View label) {
    return modified<ButtonElement>(label, std::move(action), std::nullopt);
}

}  // namespace vantix
