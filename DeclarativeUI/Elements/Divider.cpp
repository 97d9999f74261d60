#include "DeclarativeUI/Elements/Divider.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

namespace {

/// The length of a line where nothing is offered.
constexpr double defaultLength = 10;

constexpr Color separator{60 / 255.0, 60 / 255.0, 67 / 255.0, 0.29};

class DividerElement final : public Element {
public:
    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        if (environment.stackAxis == Axis::horizontal) return {pass.pixel(), proposal.height.value_or(defaultLength)};
        return {proposal.width.value_or(defaultLength), pass.pixel()};
    }
    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        pass.draw(FillRect{frame, 0, environment.foregroundColor.value_or(separator)});
    }
};

}  // namespace

View Divider() { return View(std::make_shared<const DividerElement>()); }

}  // namespace vantix
