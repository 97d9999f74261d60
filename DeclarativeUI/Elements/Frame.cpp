#include "DeclarativeUI/Elements/Frame.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Placement.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

#include <algorithm>

namespace vantix {

namespace {

class FrameElement final : public WrapperElement {
public:
    FrameElement(const ElementPointer& content, const FrameSpec& spec) : WrapperElement(content), spec_(spec) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size size = pass.measure(content(), inner(proposal), environment);
        return {length(spec_.width, 0, spec_.maxWidth, proposal.width, size.width),
                length(spec_.height, minHeight(), spec_.maxHeight, proposal.height, size.height)};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        placeAligned(content(), frame, inner(proposal), spec_.alignment, environment, pass);
    }

    Rect touchArea(const Rect& frame, const Environment&) const override { return frame; }

private:
    double minHeight() const { return spec_.minHeight.value_or(0); }

    Proposal inner(const Proposal& proposal) const {
        return {offer(spec_.width, 0, spec_.maxWidth, proposal.width),
                offer(spec_.height, minHeight(), spec_.maxHeight, proposal.height)};
    }

    static std::optional<double> offer(const std::optional<double>& fixed, double minimum,
                                       const std::optional<double>& maximum, const std::optional<double>& proposed) {
        if (fixed) return fixed;
        if (!proposed) return {};
        return std::min(std::max(*proposed, minimum), maximum.value_or(infinity));
    }

    static double length(const std::optional<double>& fixed, double minimum, const std::optional<double>& maximum,
                         const std::optional<double>& proposed, double content) {
        if (fixed) return *fixed;
        double result = content;
        if (maximum && proposed) result = std::max(result, std::min(*proposed, *maximum));
        return std::max(result, minimum);
    }

    FrameSpec spec_;
};

}  // namespace

ElementPointer framed(const ElementPointer& content, const FrameSpec& spec) {
    return modified<FrameElement>(content, spec);
}

}  // namespace vantix
