#include "DeclarativeUI/Layout/LayoutPass.h"

#include "DeclarativeUI/Layout/Layers.h"
#include "DeclarativeUI/Layout/Lengths.h"

#include <algorithm>
#include <array>

namespace vantix {

namespace {

constexpr double smallestFont = 1;
constexpr double largestFont = 1e4;

Environment environmentIn(LayoutDirection direction, ColorScheme colorScheme) {
    Environment environment;
    environment.layoutDirection = direction;
    environment.backdrop = colorScheme == ColorScheme::dark ? Color::black() : Color::white();
    return environment;
}

/// The same object for the same surroundings, as what layout remembers is kept by its address.
const Environment& outermostEnvironment(const SceneTraits& traits) {
    static const auto& fromTheLeft =
        *new const std::array{environmentIn(LayoutDirection::leftToRight, ColorScheme::light),
                              environmentIn(LayoutDirection::leftToRight, ColorScheme::dark)};
    static const auto& fromTheRight =
        *new const std::array{environmentIn(LayoutDirection::rightToLeft, ColorScheme::light),
                              environmentIn(LayoutDirection::rightToLeft, ColorScheme::dark)};
    const auto& environments = traits.layoutDirection == LayoutDirection::rightToLeft ? fromTheRight : fromTheLeft;
    return environments[traits.colorScheme == ColorScheme::dark ? 1 : 0];
}

}  // namespace

LayoutPass::LayoutPass(LayoutMemory& memory, const TextMeasurer& measurer, const SceneTraits& traits,
                       double scrollOffset)
    : memory_(memory),
      measurer_(measurer),
      traits_(traits),
      grid_(traits.scale),
      scrollOffset_(scrollOffset),
      clips_(window()),
      elements_(clips_) {
    settled_.viewport = window();
}

SettledLayout LayoutPass::run(const ElementPointer& root) {
    const Environment& outermost = outermostEnvironment(traits_);
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
                        [&] { return grid_.settled(bounded(element.measure(proposal, environment, *this))); });
}

void LayoutPass::place(const ElementPointer& view, const Rect& given, const Proposal& proposal,
                       const Environment& environment) {
    if (!view) return;
    const Element& element = *view;
    const Rect frame = grid_.settled(Rect{given.origin, bounded(given.size)});
    // The first layer that is met around a control is the outermost one, which decides how far the control reaches.
    const Control* control = controlIn(element);
    if (!control || elements_.isPlacing(*control)) return element.place(frame, proposal, environment, *this);

    elements_.beginControl(element, *control, frame);
    element.place(frame, proposal, environment, *this);
    elements_.endControl();
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
    if (settled_.scrollRange > 0 || range < grid_.pixel() / 2) return 0;
    settled_.viewport = viewport;
    settled_.scrollRange = range;
    return std::min(grid_.settled(scrollOffset_), range);
}

}  // namespace vantix
