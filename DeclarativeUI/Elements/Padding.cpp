#include "DeclarativeUI/Elements/Padding.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Lengths.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

#include <algorithm>

namespace vantix {

namespace {

class PaddingElement final : public WrapperElement {
public:
    PaddingElement(const ElementPointer& content, EdgeInsets insets, bool mirrors)
        : WrapperElement(content), insets_(insets), mirrors_(mirrors) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size size = pass.measure(content(), inner(proposal, pass), environment);
        EdgeInsets insets = pass.grid().settled(insets_);
        return {size.width + insets.left + insets.right, size.height + insets.top + insets.bottom};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame.inset(pass.grid().settled(resolved(environment))), inner(proposal, pass),
                   environment);
    }

    Rect touchArea(const Rect& frame, const Environment& environment) const override {
        return WrapperElement::touchArea(frame.inset(resolved(environment)), environment);
    }
    const Element* wrapped() const override { return nullptr; }

private:
    Proposal inner(const Proposal& proposal, const LayoutPass& pass) const {
        EdgeInsets insets = pass.grid().settled(insets_);
        auto reduced = [](const std::optional<double>& length, double inset) {
            return length ? std::optional(std::max(0.0, *length - inset)) : std::nullopt;
        };
        return {reduced(proposal.width, insets.left + insets.right),
                reduced(proposal.height, insets.top + insets.bottom)};
    }

    EdgeInsets resolved(const Environment& environment) const {
        if (!mirrors_ || !environment.isRightToLeft()) return insets_;
        return {insets_.top, insets_.right, insets_.bottom, insets_.left};
    }

    EdgeInsets insets_;
    bool mirrors_;
};

}  // namespace

ElementPointer padded(const ElementPointer& content, const EdgeInsets& insets, bool mirrors) {
    return modified<PaddingElement>(content, bounded(insets), mirrors);
}

}  // namespace vantix
