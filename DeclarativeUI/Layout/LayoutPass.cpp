#include "DeclarativeUI/Layout/LayoutPass.h"

#include "DeclarativeUI/Layout/Layers.h"
#include "DeclarativeUI/Layout/Lengths.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

constexpr double smallestFont = 1;
constexpr double largestFont = 1e4;

}  // namespace

LayoutPass::LayoutPass(LayoutMemory& memory, const TextMeasurer& measurer, const SceneTraits& traits,
                       double scrollOffset)
    : memory_(memory),
      measurer_(measurer),
      traits_(traits),
      scrollOffset_(scrollOffset),
      clips_(window()),
      elements_(clips_) {
    settled_.viewport = window();
}

SettledLayout LayoutPass::run(const ElementPointer& root) {
    static const auto& outermost = *new const Environment;
    auto offered = Proposal::of(safeArea().size);
    auto size = measure(root, offered, outermost);
    auto center = safeArea().center();
    place(root, {{center.x - size.width / 2, center.y - size.height / 2}, size}, offered, outermost);
    settled_.recorded = elements_.finish();
    return std::move(settled_);
}

Size LayoutPass::measure(const ElementPointer& view, const Proposal& proposal, const Environment& environment) {
    if (!view) return {};
    const Element& element = *view;
    return memory_.size(element, environment, proposal,
                        [&] { return bounded(element.measure(proposal, environment, *this)); });
}

void LayoutPass::place(const ElementPointer& view, const Rect& given, const Proposal& proposal,
                       const Environment& environment) {
    if (!view) return;
    const Element& element = *view;
    const Rect frame{given.origin, bounded(given.size)};
    // The first layer that is met around a control is the outermost one, which decides how far the control reaches.
    const Control* control = controlIn(element);
    if (!control || elements_.isPlacing(*control)) return element.place(frame, proposal, environment, *this);

    elements_.beginControl(element, *control, frame);
    element.place(frame, proposal, environment, *this);
    elements_.endControl();
}

double LayoutPass::roundUpToPixel(double length) const {
    constexpr double tolerance = 1e-6;
    return std::ceil(length * traits_.scale - tolerance) / traits_.scale;
}

Font LayoutPass::drawnFont(const Font& font) const {
    Font drawn = font;
    double size = font.size * traits_.textScale;
    drawn.size = size > smallestFont ? std::min(size, largestFont) : smallestFont;
    return drawn;
}

const TextLayout& LayoutPass::layOut(const Element& element, const std::string& text, const Environment& environment,
                                     const Proposal& proposal) {
    double width = proposal.width.value_or(infinity);
    return memory_.text(element, environment, width,
                        [&] { return measurer_.layOut(text, drawnFont(environment.font), width); });
}

void LayoutPass::pushClip(const Rect& frame, double cornerRadius) {
    draw(PushClip{frame, cornerRadius});
    clips_.push(frame, cornerRadius);
}

void LayoutPass::popClip() {
    draw(PopClip{});
    clips_.pop();
}

double LayoutPass::scrollOffset(const Rect& viewport, double range) {
    if (settled_.scrollRange > 0 || range < pixel() / 2) return 0;
    settled_.viewport = viewport;
    settled_.scrollRange = range;
    return std::min(scrollOffset_, range);
}

}  // namespace vantix
