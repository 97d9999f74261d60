#include "DeclarativeUI/Elements/Shapes.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

#include <algorithm>

namespace vantix {

namespace {

/// The side of a shape where nothing is offered.
constexpr double defaultSide = 10;

Size allThatIsOffered(const Proposal& proposal) {
    return {proposal.width.value_or(defaultSide), proposal.height.value_or(defaultSide)};
}

class RectangleElement final : public Element {
public:
    explicit RectangleElement(Color color) : color_(color) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        return allThatIsOffered(proposal);
    }
    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        if (color_.alpha > 0) pass.draw(FillRect{frame, 0, color_});
    }

private:
    Color color_;
};

class CircleElement final : public Element {
public:
    /// Filled without a line width.
    CircleElement(Color color, std::optional<double> lineWidth) : color_(color), lineWidth_(lineWidth) {}

    Size measure(const Proposal& proposal, const Environment&, LayoutPass&) const override {
        Size offered = allThatIsOffered(proposal);
        double diameter = std::min(offered.width, offered.height);
        return {diameter, diameter};
    }
    void place(const Rect& frame, const Proposal&, const Environment&, LayoutPass& pass) const override {
        if (lineWidth_) {
            double room = std::min(frame.size.width, frame.size.height);
            double lineWidth = std::min(room, std::max(pass.grid().pixel(), pass.grid().settled(*lineWidth_)));
            if (lineWidth <= 0) return;
            double inside = lineWidth / 2;
            pass.draw(StrokeEllipse{frame.inset({inside, inside, inside, inside}), lineWidth, color_});
        } else {
            pass.draw(FillEllipse{frame, color_});
        }
    }

private:
    Color color_;
    std::optional<double> lineWidth_;
};

}  // namespace

View ColorRectangle(Color color) { return View(std::make_shared<const RectangleElement>(color)); }

View FilledCircle(Color color) { return View(std::make_shared<const CircleElement>(color, std::nullopt)); }

View StrokedCircle(Color color, double lineWidth) {
    return View(std::make_shared<const CircleElement>(color, lineWidth));
}

}  // namespace vantix
