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
        Size size = pass.measure(content(), inner(proposal), environment);
        return {size.width + insets_.left + insets_.right, size.height + insets_.top + insets_.bottom};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.place(content(), frame.inset(resolved(environment)), inner(proposal), environment);
    }

    Rect touchArea(const Rect& frame, const Environment& environment) const override {
        return WrapperElement::touchArea(frame.inset(resolved(environment)), environment);
    }
    const Element* wrapped() const override { return nullptr; }

private:
    Proposal inner(const Proposal& proposal) const {
        auto reduced = [](const std::optional<double>& length, double inset) {
            return length ? std::optional(std::max(0.0, *length - inset)) : std::nullopt;
        };
        return {reduced(proposal.width, insets_.left + insets_.right),
                reduced(proposal.height, insets_.top + insets_.bottom)};
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
