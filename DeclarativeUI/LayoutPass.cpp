#include "DeclarativeUI/LayoutPass.h"

#include "DeclarativeUI/Button.h"
#include "DeclarativeUI/Semantics.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

/// Lengths beyond this are beyond every screen; they keep the arithmetic finite.
constexpr double longestLength = 1e7;
constexpr double smallestFont = 1;
constexpr double largestFont = 1e4;

double sane(double length) { return std::isnan(length) ? 0 : std::clamp(length, 0.0, longestLength); }

/// Spreads the bits: keys are pointers and lengths, which differ in few of them.
std::size_t mix(std::size_t seed, std::size_t hash) {
    std::size_t mixed = (seed ^ hash) * 0x9e3779b97f4a7c15ULL;
    return mixed ^ (mixed >> 32);
}

std::size_t hashLength(const std::optional<double>& length) {
    return length ? std::hash<double>{}(*length) : 0x9e3779b9;
}

Rect intersection(const Rect& a, const Rect& b) {
    double left = std::max(a.minX(), b.minX());
    double top = std::max(a.minY(), b.minY());
    return {{left, top},
            {std::max(0.0, std::min(a.maxX(), b.maxX()) - left), std::max(0.0, std::min(a.maxY(), b.maxY()) - top)}};
}

std::string spoken(const AccessibleElement& element) {
    std::string text = element.role == Role::card ? "Message" : element.label;
    if (element.role == Role::button || element.role == Role::close) text += ", button";
    if (element.role == Role::image) text += ", image";
    if (element.selected) text += *element.selected ? ", selected" : ", not selected";
    return text;
}

}  // namespace

std::size_t LayoutMemory::MeasureKeyHash::operator()(const MeasureKey& key) const {
    auto hash = mix(std::hash<const void*>{}(key.element), std::hash<const void*>{}(key.environment));
    return mix(mix(hash, hashLength(key.proposal.width)), hashLength(key.proposal.height));
}

LayoutPass::LayoutPass(LayoutMemory& memory, const TextMeasurer& measurer, const SceneTraits& traits,
                       double scrollOffset,
                       std::function<void(const std::string&, Size, const std::function<void(Size)>&)> tellSize)
    : memory_(memory),
      measurer_(measurer),
      traits_(traits),
      scrollOffset_(scrollOffset),
      tellSize_(std::move(tellSize)) {}

SettledLayout LayoutPass::run(const View& root) {
    static const Environment outermost;
    clips_ = {{window(), 0, window()}};
    auto offered = Proposal::of(safeArea().size);
    auto size = measure(root, offered, outermost);
    auto center = safeArea().center();
    place(root, {{center.x - size.width / 2, center.y - size.height / 2}, size}, offered, outermost);

    std::map<Role, int> counts;
    for (AccessibleElement& element : settled_.elements) {
        element.index = counts[element.role]++;
        if (element.spokenText.empty()) element.spokenText = spoken(element);
    }
    for (const TouchRegion& region : settled_.touchRegions) {
        if (region.element >= 0) settled_.elements[static_cast<std::size_t>(region.element)].isEnabled = true;
    }
    return std::move(settled_);
}

Size LayoutPass::measure(const View& view, const Proposal& proposal, const Environment& environment) {
    if (view.isEmpty()) return {};
    LayoutMemory::MeasureKey key{view.element().get(), &environment, proposal};
    if (auto known = memory_.sizes.find(key); known != memory_.sizes.end()) return known->second;
    Size size = view.element()->measure(proposal, environment, *this);
    size = {sane(size.width), sane(size.height)};
    memory_.sizes.emplace(key, size);
    return size;
}

void LayoutPass::place(const View& view, const Rect& frame, const Proposal& proposal, const Environment& environment) {
    if (view.isEmpty()) return;
    const Element& element = *view.element();
    // The first layer that is met around a button is the outermost one, which decides how far the button reaches.
    const ButtonElement* button = buttonIn(element);
    if (button && placedButtons_.insert(button).second) {
        placeControl(element, *button, frame, proposal, environment);
    } else {
        element.place(frame, proposal, environment, *this);
    }
}

void LayoutPass::placeControl(const Element& outermost, const ButtonElement& button, const Rect& frame,
                              const Proposal& proposal, const Environment& environment) {
    addTouchRegion(frame, button.action(), outermost);
    if (semanticIn(outermost) || !button.role()) return outermost.place(frame, proposal, environment, *this);

    int position = static_cast<int>(settled_.elements.size());
    settled_.elements.push_back(describedElement(outermost, *button.role(), {}, frame));
    settled_.touchRegions.back().element = position;
    openElements_.push_back(position);
    outermost.place(frame, proposal, environment, *this);
    openElements_.pop_back();
}

const Environment& LayoutPass::derive(const Element& modifier, const Environment& outer,
                                      const std::function<void(Environment&)>& change) {
    auto& known = memory_.environments[{&modifier, &outer}];
    if (!known) {
        auto inner = std::make_unique<Environment>(outer);
        change(*inner);
        known = std::move(inner);
    }
    return *known;
}

Font LayoutPass::drawnFont(const Font& font) const {
    Font drawn = font;
    drawn.size = std::clamp(font.size * traits_.textScale, smallestFont, largestFont);
    return drawn;
}

TextLayout LayoutPass::layOut(const std::string& text, const Font& drawnFont, double width) const {
    // Half a pixel of grace: a text that is placed into the width that it measured breaks as it did then.
    return measurer_.layOut(text, drawnFont, width + pixel() / 2);
}

double LayoutPass::roundUpToPixel(double length) const {
    constexpr double tolerance = 1e-6;
    return std::ceil(length * traits_.scale - tolerance) / traits_.scale;
}

Rect LayoutPass::safeArea() const { return window().inset(traits_.safeArea); }

const View& LayoutPass::geometryContent(const Element& reader, Size size, const std::function<View()>& make) {
    auto [known, isNew] = memory_.geometryContents.try_emplace({&reader, {size.width, size.height}});
    if (isNew) known->second = make();
    return known->second;
}

bool LayoutPass::isVisible(const Rect& frame) const {
    const Rect& clip = clips_.back().visible;
    return frame.maxX() >= clip.minX() && frame.minX() <= clip.maxX() && frame.maxY() >= clip.minY() &&
           frame.minY() <= clip.maxY();
}

double LayoutPass::cornerRadiusOf(const Rect& frame) const {
    return clips_.back().frame == frame ? clips_.back().cornerRadius : 0;
}

void LayoutPass::pushClip(const Rect& frame, double cornerRadius) {
    draw(PushClip{frame, cornerRadius});
    clips_.push_back({frame, cornerRadius, intersection(clips_.back().visible, frame)});
}

void LayoutPass::popClip() {
    draw(PopClip{});
    clips_.pop_back();
}

void LayoutPass::setScrollRange(const Rect& viewport, double range) {
    settled_.viewport = viewport;
    settled_.scrollRange = range;
}

void LayoutPass::addTouchRegion(const Rect& area, std::function<void()> action, const Element& owner) {
    settled_.touchRegions.push_back({intersection(area, clips_.back().visible), std::move(action), semanticIn(owner)});
}

void LayoutPass::beginElement(const SemanticElement& semantic, AccessibleElement element) {
    int position = static_cast<int>(settled_.elements.size());
    // The touches that mean this element were claimed by the layers right outside it.
    auto& regions = settled_.touchRegions;
    for (auto region = regions.rbegin(); region != regions.rend() && region->owner == &semantic; ++region) {
        region->element = position;
    }
    if (element.role == Role::card) settled_.cards.push_back(element.frame);
    settled_.elements.push_back(std::move(element));
    openElements_.push_back(position);
}

void LayoutPass::endElement() { openElements_.pop_back(); }

void LayoutPass::show(const AccessibleElement& shown) {
    AccessibleElement* enclosing =
        openElements_.empty() ? nullptr : &settled_.elements[static_cast<std::size_t>(openElements_.back())];
    if (!enclosing || isContainer(enclosing->role)) {
        if (shown.role == Role::text) settled_.elements.push_back(shown);
        return;
    }
    if (!shown.label.empty() && enclosing->role != Role::star && enclosing->role != Role::close) {
        enclosing->label += (enclosing->label.empty() ? "" : " ") + shown.label;
    }
    if (!enclosing->textColor) enclosing->textColor = shown.textColor;
    if (!enclosing->font) enclosing->font = shown.font;
}

void LayoutPass::tellSizeAfterLayout(const std::string& key, Size size, const std::function<void(Size)>& action) {
    settled_.afterLayout.push_back([tell = tellSize_, key, size, action] { tell(key, size, action); });
}

}  // namespace vantix
