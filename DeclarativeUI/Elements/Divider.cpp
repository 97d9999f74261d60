#include "DeclarativeUI/Elements/Divider.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

namespace {

/// The length of a line where nothing is offered.
constexpr double defaultLength = 10;

class DividerElement final : public Element {
public:
    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        if (environment.stackAxis == Axis::horizontal)
            return {pass.grid().pixel(), proposal.height.value_or(defaultLength)};
        return {proposal.width.value_or(defaultLength), pass.grid().pixel()};
    }
    void place(const Rect& frame, const Proposal&, const Environment& environment, LayoutPass& pass) const override {
        pass.draw(FillRect{frame, 0, environment.foregroundColor.value_or(Color::black())});
    }
};

}  // namespace

View Divider() { return View(std::make_shared<const DividerElement>()); }

}  // namespace vantix
