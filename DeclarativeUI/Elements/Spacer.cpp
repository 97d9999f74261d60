#include "DeclarativeUI/Elements/Spacer.h"

#include "DeclarativeUI/Layout/Element.h"
#include "DeclarativeUI/Layout/Lengths.h"

#include <algorithm>

namespace vantix {

namespace {

class SpacerElement final : public Element {
public:
    explicit SpacerElement(double minLength) : minLength_(bounded(minLength)) {}

    bool takesWhatIsLeft() const override { return true; }

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass&) const override {
        auto stretched = [this](const std::optional<double>& offered) {
            return std::max(minLength_, offered.value_or(minLength_));
        };
        if (environment.stackAxis == Axis::horizontal) return {stretched(proposal.width), 0};
        return {0, stretched(proposal.height)};
    }
    void place(const Rect&, const Proposal&, const Environment&, LayoutPass&) const override {}

private:
    double minLength_;
};

}  // namespace

View Spacer(double minLength) { return View(std::make_shared<const SpacerElement>(minLength)); }

}  // namespace vantix
