#include "DeclarativeUI/Layout/LayoutPass.h"

#include "DeclarativeUI/Elements/Button.h"
#include "DeclarativeUI/Elements/Semantics.h"
#include "DeclarativeUI/Layout/Placement.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

/// Lengths beyond this are beyond every screen; they keep the arithmetic finite.
constexpr double longestLength = 1e7;
constexpr double smallestFont = 1;
constexpr double largestFont = 1e4;

/// Spreads the bits: keys are pointers and lengths, which differ in few of them.
std::size_t mix(std::size_t seed, std::size_t hash) {
    std::size_t mixed = (seed ^ hash) * 0x9e3779b97f4a7c15ULL;
    return mixed ^ (mixed >> 32);
}

std::size_t hashLength(const std::optional<double>& length) {
    return length ? std::hash<double>{}(*length) : 0x9e3779b9;
}

std::string spokenKind(const AccessibleElement& element) {
    bool actsAsButton = element.isEnabled && (element.role == Role::image || isContainer(element.role));
    if (element.role == Role::button || element.role == Role::close || actsAsButton) return ", button";
    return element.role == Role::image ? ", image" : "";
}

std::string spoken(const AccessibleElement& element) {
    std::string text = (element.role == Role::card ? "Message" : element.label) + spokenKind(element);
    if (element.selected) text += *element.selected ? ", selected" : ", not selected";
    return text;
}

}  // namespace

double bounded(double length) { return std::isnan(length) ? 0 : std::clamp(length, -longestLength, longestLength); }

EdgeInsets bounded(const EdgeInsets& insets) {
    return {bounded(insets.top), bounded(insets.left), bounded(insets.bottom), bounded(insets.right)};
}

Size bounded(Size size) { return {std::max(0.0, bounded(size.width)), std::max(0.0, bounded(size.height))}; }

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
    settled_.viewport = window();
    auto offered = Proposal::of(safeArea().size);
    auto size = measure(root, offered, outermost);
    auto center = safeArea().center();
    place(root, {{center.x - size.width / 2, center.y - size.height / 2}, size}, offered, outermost);

    for (const TouchRegion& region : settled_.touchRegions) {
        if (region.element >= 0) settled_.elements[static_cast<std::size_t>(region.element)].isEnabled = true;
    }
    std::map<Role, int> counts;
    for (AccessibleElement& element : settled_.elements) {
        element.index = counts[element.role]++;
        if (element.spokenText.empty()) element.spokenText = spoken(element);
    }
    return std::move(settled_);
}

Size LayoutPass::measure(const View& view, const Proposal& proposal, const Environment& environment) {
    if (view.isEmpty()) return {};
    LayoutMemory::MeasureKey key{view.element().get(), &environment, proposal};
    if (auto known = memory_.sizes.find(key); known != memory_.sizes.end()) return known->second;
    Size size = bounded(view.element()->measure(proposal, environment, *this));
    memory_.sizes.emplace(key, size);
    return size;
}

void LayoutPass::place(const View& view, const Rect& given, const Proposal& proposal, const Environment& environment) {
    if (view.isEmpty()) return;
    const Element& element = *view.element();
    const Rect frame{given.origin, bounded(given.size)};
    // The first layer that is met around a button is the outermost one, which decides how far the button reaches.
    const ButtonElement* button = buttonIn(element);
    if (!button || button == openButton_.button) return element.place(frame, proposal, environment, *this);

    auto outerButton = std::exchange(openButton_, {button, visiblePart(frame)});
    placeControl(element, *button, frame, proposal, environment);
    openButton_ = outerButton;
}

void LayoutPass::placeControl(const Element& outermost, const ButtonElement& button, const Rect& frame,
                              const Proposal& proposal, const Environment& environment) {
    if (outermost.touchedElement() || !button.role()) return outermost.place(frame, proposal, environment, *this);

    open(describedElement(outermost, *button.role(), {}, frame), outermost);
    outermost.place(frame, proposal, environment, *this);
    endElement();
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
    double size = font.size * traits_.textScale;
    drawn.size = size > smallestFont ? std::min(size, largestFont) : smallestFont;
    return drawn;
}

const TextLayout& LayoutPass::layOut(const Element& element, const std::string& text, const Environment& environment,
                                     const Proposal& proposal) {
    double width = proposal.width.value_or(infinity);
    auto [known, isNew] = memory_.texts.try_emplace({&element, &environment, {width, {}}});
    if (isNew) known->second = measurer_.layOut(text, drawnFont(environment.font), width);
    return known->second;
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

Rect LayoutPass::visiblePart(const Rect& frame) const { return intersection(frame, clips_.back().visible); }

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
    clips_.push_back({frame, cornerRadius, visiblePart(frame)});
}

void LayoutPass::popClip() {
    draw(PopClip{});
    clips_.pop_back();
}

double LayoutPass::scrollOffset(const Rect& viewport, double range) {
    if (settled_.scrollRange > 0 || range < pixel() / 2) return 0;
    settled_.viewport = viewport;
    settled_.scrollRange = range;
    return std::min(scrollOffset_, range);
}

void LayoutPass::addControl(const ButtonElement& button) { addTouchRegion(openButton_.reach, button.action(), button); }

void LayoutPass::addGesture(const Rect& area, std::function<void()> action, const Element& gesture) {
    addTouchRegion(visiblePart(area), std::move(action), gesture);
}

void LayoutPass::addTouchRegion(const Rect& area, std::function<void()> action, const Element& view) {
    TouchRegion region{area, std::move(action), view.touchedElement()};
    if (!region.owner && !openElements_.empty() && isLayerOf(*openElements_.back().outermost, view)) {
        region.element = openElements_.back().position;
    }
    settled_.touchRegions.push_back(std::move(region));
}

void LayoutPass::beginElement(const SemanticElement& semantic, AccessibleElement element) {
    if (element.role == Role::card) settled_.cards.push_back(visiblePart(element.frame));
    int position = open(std::move(element), semantic);
    // The touches that mean this element were claimed by the layers right outside it.
    auto& regions = settled_.touchRegions;
    for (auto region = regions.rbegin(); region != regions.rend(); ++region) {
        if (region->owner != &semantic || region->element >= 0) break;
        region->element = position;
    }
}

int LayoutPass::open(AccessibleElement element, const Element& outermost) {
    int position = static_cast<int>(settled_.elements.size());
    openElements_.push_back({position, &outermost, element.label.empty()});
    settled_.elements.push_back(std::move(element));
    return position;
}

void LayoutPass::show(const AccessibleElement& shown) {
    AccessibleElement* enclosing =
        openElements_.empty() ? nullptr : &settled_.elements[static_cast<std::size_t>(openElements_.back().position)];
    if (!enclosing || isContainer(enclosing->role)) {
        if (shown.role == Role::text) settled_.elements.push_back(shown);
        return;
    }
    if (!shown.label.empty() && openElements_.back().collectsTexts) {
        enclosing->label += (enclosing->label.empty() ? "" : " ") + shown.label;
    }
    if (!enclosing->textColor) enclosing->textColor = shown.textColor;
    if (!enclosing->font) enclosing->font = shown.font;
}

void LayoutPass::tellSizeAfterLayout(const std::string& key, Size size, const std::function<void(Size)>& action) {
    settled_.afterLayout.push_back([tell = tellSize_, key, size, action] { tell(key, size, action); });
}

}  // namespace vantix
