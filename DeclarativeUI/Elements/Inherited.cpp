#include "DeclarativeUI/Elements/Inherited.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

class InheritedElement final : public WrapperElement {
public:
    InheritedElement(const ElementPointer& content, std::function<void(Environment&)> change)
        : WrapperElement(content), change_(std::move(change)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        return pass.measure(content(), proposal, inner(environment, pass));
    }
    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame, proposal, inner(environment, pass));
    }

private:
    const Environment& inner(const Environment& environment, LayoutPass& pass) const {
        return pass.memory().environment(*this, environment, change_);
    }

    std::function<void(Environment&)> change_;
};

}  // namespace

ElementPointer inherited(const ElementPointer& content, std::function<void(Environment&)> change) {
    return modified<InheritedElement>(content, std::move(change));
}

ElementPointer standingOn(const ElementPointer& content, const Color& color) {
    return inherited(content, [color](Environment& inner) { inner.backdrop = composited(color, inner.backdrop); });
}

}  // namespace vantix
