#include "DeclarativeUI/Elements/Button.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

namespace {

/// Sets the foreground colour where no ancestor did.
class DefaultTintElement final : public WrapperElement {
public:
    DefaultTintElement(const View& content, Color tint) : WrapperElement(content), tint_(tint) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        return pass.measure(content(), proposal, tinted(environment, pass));
    }
    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame, proposal, tinted(environment, pass));
    }

private:
    const Environment& tinted(const Environment& environment, LayoutPass& pass) const {
        return pass.derive(*this, environment, [this](Environment& inner) {
            if (!inner.foregroundColor) inner.foregroundColor = tint_;
        });
    }

    Color tint_;
};

class TapElement final : public WrapperElement {
public:
    TapElement(const View& content, std::function<void()> action)
        : WrapperElement(content), action_(std::move(action)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.addGesture(touchArea(frame, environment), action_, *this);
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::function<void()> action_;
};

}  // namespace

void ButtonElement::place(const Rect& frame, const Proposal& proposal, const Environment& environment,
                          LayoutPass& pass) const {
    pass.addControl(*this);
    WrapperElement::place(frame, proposal, environment, pass);
}

View Button(std::function<void()> action, View label) {
    return modified<ButtonElement>(modified<DefaultTintElement>(label, Color::systemBlue()), std::move(action),
                                   std::optional(Role::button));
}

View PlainButton(std::function<void()> action, View label) {
    return modified<ButtonElement>(label, std::move(action), std::nullopt);
}

View View::onTapGesture(std::function<void()> action) const { return modified<TapElement>(*this, std::move(action)); }

}  // namespace vantix
