#include "DeclarativeUI/LayoutPass.h"

#include "DeclarativeUI/Button.h"
#include "DeclarativeUI/Placement.h"
#include "DeclarativeUI/Semantics.h"

#include <algorithm>
#include <cmath>

namespace vantix {

namespace {

/// Lengths beyond this are beyond every screen; they keep the arithmetic finite.
constexpr double longestLength = 1e7;
constexpr double smallestFont = 1;
constexpr double largestFont = 1e4;

/// What arithmetic may add to a length or take from it.
constexpr double tolerance = 1e-6;

bool isClose(Size a, Size b) {
    return std::abs(a.width - b.width) < tolerance && std::abs(a.height - b.height) < tolerance;
}

std::string spoken(const AccessibleElement& element) {
    std::string text = element.role == Role::card ? "Message" : element.label;
    if (element.role == Role::button || element.role == Role::close) text += ", button";
    if (element.role == Role::image) text += ", image";
    if (element.selected) text += *element.selected ? ", selected" : ", not selected";
    return text;
}

}  // namespace

double bounded(double length) { return std::isnan(length) ? 0 : std::clamp(length, -longestLength, longestLength); }

std::size_t LayoutMemory::SubjectHash::operator()(const Subject& subject) const {
    return std::hash<const void*>{}(subject.first) * 31 + std::hash<const void*>{}(subject.second);
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
    auto size = measure(root, Proposal::of(safeArea().size), outermost);
    auto center = safeArea().center();
    place(root, {{center.x - size.width / 2, center.y - size.height / 2}, size}, outermost);

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
    LayoutMemory::Subject subject{view.element().get(), &environment};
    for (const auto& known : memory_.answers[subject]) {
        if (known.proposal == proposal) return known.size;
    }
    Size answer = view.element()->measure(proposal, environment, *this);
    Size size{std::max(0.0, bounded(answer.width)), std::max(0.0, bounded(answer.height))};
    memory_.answers[subject].push_back({proposal, size});
    return size;
}

Proposal LayoutPass::answeredProposal(const Element& element, Size size, const Environment& environment) const {
    auto answers = memory_.answers.find({&element, &environment});
    if (answers == memory_.answers.end()) return Proposal::of(size);
    auto answer = std::find_if(answers->second.begin(), answers->second.end(),
                               [&](const LayoutMemory::Answer& known) { return isClose(known.size, size); });
    return answer == answers->second.end() ? Proposal::of(size) : answer->proposal;
}

void LayoutPass::place(const View& view, const Rect& frame, const Environment& environment) {
    if (view.isEmpty()) return;
    const Element& element = *view.element();
    // The first layer that is met around a button is the outermost one, which decides how far the button reaches.
    const ButtonElement* button = buttonIn(element);
    if (!button || button == openButton_) return element.place(frame, environment, *this);

    auto outerButton = std::exchange(openButton_, button);
    placeControl(element, *button, frame, environment);
    openButton_ = outerButton;
}

void LayoutPass::placeControl(const Element& outermost, const ButtonElement& button, const Rect& frame,
                              const Environment& environment) {
    addTouchRegion(frame, button.action(), outermost);
    if (outermost.touchedElement() || !button.role()) return outermost.place(frame, environment, *this);

    settled_.touchRegions.back().element = open(describedElement(outermost, *button.role(), {}, frame));
    outermost.place(frame, environment, *this);
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
    auto& texts = memory_.texts[{&element, &environment}];
    for (const auto& known : texts) {
        if (known.maximumWidth == width) return known.layout;
    }
    return texts.emplace_back(width, measurer_.layOut(text, drawnFont(environment.font), width)).layout;
}

double LayoutPass::roundUpToPixel(double length) const {
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

void LayoutPass::addTouchRegion(const Rect& area, std::function<void()> action, const Element& view) {
    TouchRegion region{intersection(area, clips_.back().visible), std::move(action), view.touchedElement()};
    if (!region.owner && !openElements_.empty()) region.element = openElements_.back().position;
    settled_.touchRegions.push_back(std::move(region));
}

void LayoutPass::beginElement(const SemanticElement& semantic, AccessibleElement element) {
    if (element.role == Role::card) settled_.cards.push_back(element.frame);
    if (double radius = cornerRadiusOf(element.frame); radius > 0 && !element.cornerRadius) {
        element.cornerRadius = radius;
    }
    int position = open(std::move(element));
    // The regions that wait for this element are those of the layers around it, which came last.
    for (auto region = settled_.touchRegions.rbegin(); region != settled_.touchRegions.rend(); ++region) {
        if (region->owner != &semantic || region->element >= 0) break;
        region->element = position;
    }
}

int LayoutPass::open(AccessibleElement element) {
    int position = static_cast<int>(settled_.elements.size());
    openElements_.push_back({position, element.label.empty()});
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
